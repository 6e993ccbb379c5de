#include "ResultFile.h"

#include <cerrno>

#include "Errors.h"
#include "Words.h"

namespace messwerk {

ResultFile::ResultFile(Options const &options)
    : columns_(resultColumns(options)),
      path_(options.output),
      place_(options.output),
      form_(ResultForm::open(options, place_.workPath())) {
    writeLine([this](std::size_t field, std::size_t column) {
        form_->writeName(field, columns_[column].name);
    });
}

std::optional<std::string> ResultFile::fault(Row const &row) const {
    std::size_t field = 0;
    for (std::size_t index = 0; index < columns_.size(); ++index) {
        auto const &[name, kind, momentForm] = columns_[index];
        if (kind == ColumnKind::Omitted) continue;
        std::string reason = kind == ColumnKind::Number
                                 ? form_->fault(field, row[index].number)
                                 : form_->fault(field, row[index].text.text());
        if (!reason.empty()) return reason.insert(0, name + " ");
        ++field;
    }
    return std::nullopt;
}

void ResultFile::write(Row const &row) {
    writeLine([this, &row](std::size_t field, std::size_t column) {
        if (columns_[column].kind == ColumnKind::Number)
            form_->write(field, row[column].number);
        else
            form_->write(field, row[column].text);
    });
}

// Calls `writeField` with the numbers of each field and its column, which isn't omitted, and ends
// the line.
template <typename WriteField>
void ResultFile::writeLine(WriteField writeField) {
    try {
        std::size_t field = 0;
        for (std::size_t column = 0; column < columns_.size(); ++column)
            if (columns_[column].kind != ColumnKind::Omitted) writeField(field++, column);
        form_->endLine();
    } catch (TQCSVOutput::Failure const &) {
        // Carries no text: what it means shows in the state.
    }
    check();
}

// Throws if the file hasn't taken what was written.
void ResultFile::check() const {
    if (form_->hasFailed()) throw systemError("can't write " + quotedPath(path_), errno);
}

void ResultFile::finish() {
    form_->close();  // what is left goes out now, and may find the disk full
    check();
    place_.keep();
}

}  // namespace messwerk
