#include "ResultFile.h"

#include <cerrno>

#include "Errors.h"
#include "Paths.h"
#include "Words.h"

namespace messwerk {
namespace {

/// What the library's failure, which carries no text, means to the user.
RunError writeError(std::string const &path) {
    return systemError("can't write " + quoted(path), errno);
}

}  // namespace

ResultFile::ResultFile(Options const &options)
    : columns_(resultColumns(options)),
      path_(options.output),
      place_(options.output),
      file_(libraryPath(place_.workPath()).c_str(), 0, 1, 0, 1, options.separator) {
    writeLine([this](std::size_t index) { file_ << columns_[index].name.c_str(); });
}

void ResultFile::write(Row const &row) {
    writeLine([this, &row](std::size_t index) {
        if (columns_[index].kind == ColumnKind::Number)
            file_ << row[index].number;
        else
            file_ << row[index].text;
    });
}

// Calls `writeField` with the index of each column that isn't omitted, and ends the line.
template <typename WriteField>
void ResultFile::writeLine(WriteField writeField) {
    try {
        for (std::size_t index = 0; index < columns_.size(); ++index)
            if (columns_[index].kind != ColumnKind::Omitted) writeField(index);
        file_.nextline();
    } catch (TQCSVOutput::Failure const &) {
        throw writeError(path_);
    }
}

void ResultFile::finish() {
    file_.close();  // what is left goes out now, and may find the disk full
    if (file_.fail()) throw writeError(path_);
    place_.keep();
}

}  // namespace messwerk
