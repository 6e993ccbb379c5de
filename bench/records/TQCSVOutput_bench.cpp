#include "tqlib/records/TQCSVOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "FileContent.h"
#include "Job.h"
#include "records/MeasurementTable.h"
#include "TemporaryFile.h"

namespace {

/// Writes fields with to_chars into a block of 64 KiB, and the block to a file.
class FieldWriter {
  public:
    explicit FieldWriter(std::string const &path)
        : file_(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666)) {}
    FieldWriter(FieldWriter const &) = delete;
    FieldWriter &operator=(FieldWriter const &) = delete;
    ~FieldWriter() {
        flush();
        close(file_);
    }

    void write(int value) {
        makeRoom();
        next_ = std::to_chars(next_, end(), value).ptr;
        *next_++ = ';';
    }

    void write(double value) {
        makeRoom();
        next_ = std::to_chars(next_, end(), value, std::chars_format::fixed, 6).ptr;
        while (next_[-1] == '0')
            --next_;
        *next_++ = ';';
    }

    void endLine() { *next_++ = '\n'; }

  private:
    static constexpr std::ptrdiff_t longestField = 400;  // the largest double, and a line end

    char *end() { return block_.data() + block_.size(); }

    void makeRoom() {
        if (end() - next_ < longestField) flush();
    }

    void flush() {
        auto const size = static_cast<std::size_t>(next_ - block_.data());
        if (::write(file_, block_.data(), size) != static_cast<ssize_t>(size)) std::abort();
        next_ = block_.data();
    }

    int file_;
    std::array<char, 64 * 1024> block_;
    char *next_ = block_.data();
};

void writeWithPrintf(std::string const &path) {
    std::FILE *const file = std::fopen(path.c_str(), "w");
    for (Measurement const &line : measurements()) {
        for (int const count : line.counts)
            std::fprintf(file, "%d;", count);
        for (double const value : line.values) {
            char text[400];
            int length = std::snprintf(text, sizeof text, "%lf", value);
            while (text[length - 1] == '0')
                --length;
            std::fprintf(file, "%.*s;", length, text);
        }
        std::fputc('\n', file);
    }
    std::fclose(file);
}

void writeWithToChars(std::string const &path) {
    FieldWriter file(path);
    for (Measurement const &line : measurements()) {
        for (int const count : line.counts)
            file.write(count);
        for (double const value : line.values)
            file.write(value);
        file.endLine();
    }
}

void writeWithTqlib(std::string const &path) {
    TQCSVOutput file(path.c_str());
    for (Measurement const &line : measurements()) {
        for (int const count : line.counts)
            file << count;
        for (double const value : line.values)
            file << value;
        file.nextline();
    }
}

auto const writing = Job<FileContent>("csv write")
                         .reference(writer<writeWithPrintf>)
                         .contender("to_chars", writer<writeWithToChars>)
                         .contender("tqlib", writer<writeWithTqlib>);

}  // namespace
