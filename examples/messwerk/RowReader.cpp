#include "RowReader.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "Words.h"

namespace messwerk {
namespace {

constexpr char quote = '"';

/// True if `field` has no quote, or one at either end and none between.
bool quotesEnclose(std::string_view field) {
    auto const quotes = std::ranges::count(field, quote);
    return quotes == 0 || (quotes == 2 && field.front() == quote && field.back() == quote);
}

/// The first field whose quotes the library's reader would take for something else; empty if there
/// is none.
std::string_view misquotedField(std::string_view line, char separator) {
    if (line.find(quote) == std::string_view::npos) return {};
    for (std::size_t start = 0; start <= line.size();) {
        std::string_view const field = line.substr(start, line.find(separator, start) - start);
        if (!quotesEnclose(field)) return field;
        start += field.size() + 1;
    }
    return {};
}

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
    : columns_(options.columns),
      separator_(options.separator),
      row_(row),
      lines_(options.input, options.separator) {
    while (lines_.number() < options.headerLines)
        if (lines_.next() == LineKind::End) break;
}

bool RowReader::fetch() {
    for (kind_ = lines_.next(); kind_ == LineKind::Blank; kind_ = lines_.next())
        ++blankLines_;
    return kind_ != LineKind::End;
}

std::optional<std::string> RowReader::readRow() {
    std::string fault = formFault(lines_.fields().currentLine());
    for (std::size_t index = 0; fault.empty() && index < columns_.size(); ++index)
        fault = readField(index);
    return fault.empty() ? std::nullopt : std::optional(fault);
}

std::optional<double> RowReader::partRead() {
    auto const length = static_cast<double>(lines_.fileLength());
    return length > 0 ? std::optional(static_cast<double>(lines_.position()) / length)
                      : std::nullopt;
}

// What is wrong with the line before any field is taken; empty if nothing is.
std::string RowReader::formFault(char const *line) {
    if (kind_ == LineKind::TooLong) return "the line has more than 9191 characters";
    if (kind_ == LineKind::HasNul) return "the line has a NUL character";
    if (*line == separator_) return "the first field is empty";
    std::string_view const misquoted = misquotedField(line, separator_);
    if (!misquoted.empty()) return "quotes don't enclose a whole field: " + quoted(misquoted);
    return countFault(line);
}

// One separator behind the last field belongs to the line, as the library writes it.
std::string RowReader::countFault(char const *line) {
    std::string_view const text = line;
    auto const expected = static_cast<long>(columns_.size());
    long fields = 1 + static_cast<long>(std::ranges::count(text, separator_));
    lastIsEmpty_ = text.ends_with(separator_);
    if (lastIsEmpty_ && fields == expected + 1) {
        lastIsEmpty_ = false;
        --fields;
    }
    if (fields == expected) return {};
    return counted(fields, "field") + " instead of " + std::to_string(expected);
}

// Takes the next field, that of column `index`; the result is what is wrong with it, or empty. To
// the library a separator at the end of the line opens no field.
std::string RowReader::readField(std::size_t index) {
    Cell &cell = row_[index];
    if (lastIsEmpty_ && index + 1 == columns_.size())
        cell.text.Empty();
    else
        lines_.fields() >> cell.text;
    if (!hasNumber(columns_[index].kind)) return {};
    std::string const fault = numberFault(columns_[index], cell);
    return fault.empty() ? fault : columns_[index].name + " " + fault;
}

}  // namespace messwerk
