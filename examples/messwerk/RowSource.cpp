#include "RowSource.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <clocale>
#include <iterator>

#include "Paths.h"
#include "Words.h"

namespace messwerk {
namespace {

constexpr char quote = '"';

/// Most characters of a line, in every form.
constexpr std::int64_t longestLine = 9191;

/// A source on one of the library's readers of lines.
template <typename Reader>
class LineSource : public RowSource {
  public:
    LineSource(std::string const &path, Reader const &file) : RowSource(path, file), file_(file) {}

    std::int64_t position() override { return file_.tellg(); }

  protected:
    Reader &file() { return file_; }
    std::string_view line() { return file_.currentLine(); }

  private:
    /// What one call of the library's nextline() took from the file, in bytes.
    struct Piece {
        std::int64_t taken;    ///< the line end included
        std::int64_t content;  ///< NUL characters included
        std::int64_t visible;  ///< up to the first NUL
    };

    LineKind fetch() override {
        Piece piece = takePiece();
        if (piece.taken == 0) return LineKind::End;
        if (piece.content == 0) return LineKind::Blank;
        if (!isCut(piece))
            return piece.visible < piece.content ? LineKind::HasNul : LineKind::Fields;
        do
            piece = takePiece();
        while (isCut(piece));
        return LineKind::TooLong;
    }

    Piece takePiece() {
        std::int64_t const before = file_.tellg();
        file_.nextline();
        // To the reader a file that can't be read any further ends here, as any file does.
        if (file_.rdbuf()->readFailed()) throw readError(errno);
        return {file_.tellg() - before, file_.gcount(), static_cast<std::int64_t>(line().size())};
    }

    // A whole line takes its line end from the file as well, unless it is the last one.
    bool isCut(Piece const &piece) {
        if (piece.taken != piece.content) return false;
        file_.clear();
        return file_.peek() >= 0;
    }

    Reader file_;
};

std::string countFault(long fields, std::size_t expected) {
    auto const right = static_cast<long>(expected);
    return fields == right ? "" : counted(fields, "field") + " instead of " + std::to_string(right);
}

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

/// Fields with a separator between them.
class SeparatedSource final : public LineSource<TQCSVInput> {
  public:
    explicit SeparatedSource(Options const &options)
        : LineSource(options.input,
                     TQCSVInput(libraryPath(options.input).c_str(), 0, 1, 0, options.separator)),
          count_(options.columns.size()),
          separator_(options.separator) {}

    std::string fault() override {
        if (line().front() == separator_) return "the first field is empty";
        std::string_view const misquoted = misquotedField(line(), separator_);
        if (!misquoted.empty()) return "quotes don't enclose a whole field: " + quoted(misquoted);
        // One separator behind the last field belongs to the line, as the library writes it.
        auto fields = 1 + static_cast<long>(std::ranges::count(line(), separator_));
        lastIsEmpty_ = line().ends_with(separator_);
        if (lastIsEmpty_ && fields == static_cast<long>(count_) + 1) {
            lastIsEmpty_ = false;
            --fields;
        }
        return countFault(fields, count_);
    }

    // To the library a separator at the end of the line opens no field.
    void take(std::size_t index, TQString &text) override {
        if (lastIsEmpty_ && index + 1 == count_)
            text.Empty();
        else
            file() >> text;
    }

  private:
    std::size_t count_;
    char separator_;
    bool lastIsEmpty_ = false;  ///< the line ends with the separator of a last field without text
};

/// Fields with blanks between them.
class TextSource final : public LineSource<TQTextInput> {
  public:
    explicit TextSource(Options const &options)
        : LineSource(options.input, TQTextInput(libraryPath(options.input).c_str())),
          count_(options.columns.size()) {}

    std::string fault() override {
        auto const bad = line().find_first_of("\"'");
        if (bad != std::string_view::npos)
            return "a quote can't be read: " + quoted(line().substr(bad));
        return countFault(countItems(), count_);
    }

    void take(std::size_t /*index*/, TQString &text) override { file() >> text; }

  private:
    long countItems() {
        long count = 0;
        bool between = true;
        for (char const c : line()) {
            bool const separates = c == ' ' || c == '=';
            count += between && !separates;
            between = separates;
        }
        return count;
    }

    std::size_t count_;
};

/// Fields of fixed width. Each line is taken as a whole: a pipe knows no way back to its beginning.
class ColumnSource final : public RowSource {
  public:
    explicit ColumnSource(Options const &options)
        : ColumnSource(options, TQFortranInput(libraryPath(options.input).c_str())) {}

    // The library leaves a field that isn't there empty, which may be right for a text.
    std::string fault() override { return {}; }

    // Numbers have a point in such a file. The texts that follow know the locale's.
    void take(std::size_t index, TQString &text) override {
        Field const &field = layout_[index];
        at_ = std::min(at_ + field.gap, line_.size());
        text = line_.substr(at_, field.width).c_str();
        at_ += field.width;
        text.TrimRight();
        if (field.kind != 'A') text.ReplaceChar('.', *std::localeconv()->decimal_point);
    }

    std::int64_t position() override { return file_.tellg(); }

  private:
    ColumnSource(Options const &options, TQFortranInput const &file)
        : RowSource(options.input, file), layout_(options.inputLayout), file_(file) {}

    LineKind fetch() override {
        if (number() > 0) file_.NL();
        if (file_.peek() < 0) {
            if (file_.rdbuf()->readFailed()) throw readError(errno);
            return LineKind::End;
        }
        std::array<char, longestLine + 2> block;
        file_.A(longestLine + 1, block.data());
        std::int64_t const content = file_.gcount();
        if (content == 0) return LineKind::Blank;
        if (content > longestLine) {
            file_.X(INT_MAX);
            return LineKind::TooLong;
        }
        line_ = block.data();
        at_ = 0;
        return std::ssize(line_) < content ? LineKind::HasNul : LineKind::Fields;
    }

    Layout layout_;
    TQFortranInput file_;
    std::string line_;
    std::size_t at_ = 0;  ///< the column behind the fields that were taken
};

std::int64_t sizeOf(std::string const &path) {
    struct stat status {};
    bool const known = stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return known ? status.st_size : 0;
}

bool isFolder(std::string const &path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::unique_ptr<RowSource> RowSource::open(Options const &options) {
    switch (options.inputForm) {
        case Form::Text:
            return std::make_unique<TextSource>(options);
        case Form::Columns:
            return std::make_unique<ColumnSource>(options);
        default:
            return std::make_unique<SeparatedSource>(options);
    }
}

RowSource::RowSource(std::string const &path, classic::ios const &file) : path_(path) {
    int const reason = errno;
    if (file.fail())
        throw systemError("can't read " + quotedPath(path), isFolder(path) ? EISDIR : reason);
    length_ = sizeOf(path);
}

RowSource::~RowSource() = default;

LineKind RowSource::next() {
    LineKind const kind = fetch();
    if (kind != LineKind::End)
        ++number_;
    else if (position() < length_)
        throw readError(0);  // the file was there to be read
    return kind;
}

RunError RowSource::readError(int reason) const {
    std::string const place = number_ == 0 ? "" : " beyond line " + std::to_string(number_);
    return systemError("can't read " + quotedPath(path_) + place, reason);
}

}  // namespace messwerk
