#include "RowReader.h"

#include <cmath>

#include "Words.h"

namespace messwerk {
namespace {

/// What the field of a column stands for; nothing if it isn't what the column holds.
std::optional<double> numberOf(Column const &column, TQString const &text) {
    return column.form == nullptr ? wholeNumber(text) : momentOf(*column.form, text);
}

/// What is wrong with a field that has to have a number; empty, with the number in `cell`, if
/// nothing is.
std::string numberFault(Column const &column, Cell &cell) {
    auto const number = numberOf(column, cell.text);
    if (!number) {
        if (TQString(cell.text).Trim().IsEmpty()) return "is empty";
        std::string const what = column.form == nullptr ? "number" : describe(*column.form);
        return "isn't a " + what + ": " + quoted(cell.text.text());
    }
    cell.number = *number;
    if (std::fabs(*number) < tooLarge) return {};
    return "isn't a finite number of at most 191 digits: " + quoted(cell.text.text());
}

}  // namespace

RowReader::RowReader(Options const &options, Row &row)
    : columns_(options.columns), row_(row), source_(RowSource::open(options)) {
    while (source_->number() < options.headerLines)
        if (source_->next() == LineKind::End) break;
}

bool RowReader::fetch() {
    for (kind_ = source_->next(); kind_ == LineKind::Blank; kind_ = source_->next())
        ++blankLines_;
    return kind_ != LineKind::End;
}

std::optional<std::string> RowReader::readRow() {
    std::string fault = formFault();
    for (std::size_t index = 0; fault.empty() && index < columns_.size(); ++index)
        fault = readField(index);
    return fault.empty() ? std::nullopt : std::optional(fault);
}

std::optional<double> RowReader::partRead() {
    auto const length = static_cast<double>(source_->length());
    return length > 0 ? std::optional(static_cast<double>(source_->position()) / length)
                      : std::nullopt;
}

// What is wrong with the line before any field is taken; empty if nothing is.
std::string RowReader::formFault() {
    if (kind_ == LineKind::TooLong) return "the line has more than 9191 characters";
    if (kind_ == LineKind::HasNul) return "the line has a NUL character";
    return source_->fault();
}

// Takes the next field, that of column `index`; the result is what is wrong with it, or empty.
std::string RowReader::readField(std::size_t index) {
    Cell &cell = row_[index];
    source_->take(index, cell.text);
    if (!hasNumber(columns_[index].kind)) return {};
    std::string const fault = numberFault(columns_[index], cell);
    return fault.empty() ? fault : columns_[index].name + " " + fault;
}

}  // namespace messwerk
