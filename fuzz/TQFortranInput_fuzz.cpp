// Fixed columns against a plain model that holds the file. An input is a line and the file: the
// line holds a comma for a locale with a decimal comma, a digit for the size of transfers, and the
// steps, each with the letters of its width.

#include "tqlib/records/TQFortranInput.h"

#include <algorithm>
#include <climits>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "support/Check.h"
#include "support/FileInput.h"
#include "support/FileModel.h"

namespace {

class Columns {
  public:
    explicit Columns(std::string const &content)
        : library_(scratch().path()), file_{content, 0, true} {}

    template <typename Number, typename Converted = Number>
    void number(Input &script) {
        int const width = takeWidth(script);
        Number library{7}, expected{7};
        bool const fits = convert<Number, Converted>(take(width), width, expected);
        expectSame("field taken", succeeds([&] { library_.readftn(&library, width); }), fits);
        expectSame("number", library, expected);
    }

    void real(Input &script) {
        int const width = takeWidth(script);
        auto const decimals = static_cast<int>(script.pick(12));
        double library{7}, expected{7};
        bool const fits = convert<double, double>(take(width), width, expected);
        auto const read = [&] { library_.F(static_cast<unsigned>(width), decimals, library); };
        expectSame("field taken", succeeds(read), fits);
        expectSame("number", library, expected);
    }

    void text(Input &script) {
        int const width = takeWidth(script);
        TQString library, expected = take(width).c_str();
        library_.A(static_cast<unsigned>(width), library);
        expected.ConvertDosToWindows();
        expectSame("text", library.text(), expected.text());
    }

    void block(Input &script) {
        int const width = takeWidth(script);
        std::vector<char> library(static_cast<std::size_t>(width) + 1, 'x');
        library_.A(static_cast<unsigned>(width), library.data());
        std::string const expected = take(width);
        expectSame("text", {library.data(), expected.size()}, expected);
        expectSame("terminator", library[expected.size()], '\0');
    }

    void character(Input & /*script*/) {
        char library = 'x';
        library_.readftn(library);
        expectSame("character", library, static_cast<char>(file_.peek()));
        if (file_.peek() >= 0) file_.skip();
    }

    void skip(Input &script) {
        int const width = takeWidth(script);
        library_.X(static_cast<unsigned>(width));
        take(width);
    }

    void nextLine(Input & /*script*/) {
        library_.NL();
        take(32000);
        if (file_.peek() == '\n') file_.skip();
        lineStart_ = file_.position;
        ++lineNo_;
    }

    void readAgain(Input & /*script*/) {
        library_.reReadLine();
        file_.position = lineStart_;
    }

    void currentLine(Input & /*script*/) {
        file_.position = lineStart_;
        std::string const expected = take(INT_MAX);
        if (file_.peek() == '\n') file_.skip();
        expectSame("line", library_.currentLine(), expected.c_str());
    }

    void expectSamePlace() {
        expectSame("line number", library_.lineNumber(), lineNo_);
        library_.clear();
        expectSame("place", library_.tellg(), static_cast<classic::streampos>(file_.position));
    }

  private:
    // Most often a usual width, sometimes a wide one.
    static int takeWidth(Input &script) {
        auto const width = static_cast<int>(script.pick(64));
        return width < 40 ? width : (width - 40) * 17;
    }

    template <typename Read>
    static bool succeeds(Read read) {
        try {
            read();
            return true;
        } catch (TQFortranInput::Failure const &) {
            return false;
        }
    }

    std::string take(int width) {
        std::string field;
        for (; width > 0 && file_.peek() >= 0 && file_.peek() != '\n'; --width, file_.skip())
            field += static_cast<char>(file_.peek());
        return field;
    }

    template <typename Number, typename Converted>
    static bool convert(std::string field, int width, Number &number) {
        if (field.empty()) return number = 0, true;
        char const *format = std::is_same_v<Converted, long>            ? "%ld"
                             : std::is_same_v<Converted, unsigned long> ? "%lu"
                             : std::is_same_v<Converted, int>           ? "%d"
                             : std::is_same_v<Converted, unsigned int>  ? "%u"
                                                                        : "%lf";
        std::size_t const point = field.find('.');
        bool const comma = *std::localeconv()->decimal_point == ',';
        if (std::is_same_v<Converted, double> && comma && point != std::string::npos)
            field[point] = ',';
        Converted converted = 0;
        std::string const blanks(20, ' ');
        bool const fits =
            std::sscanf(field.c_str(), format, &converted) == 1 ||
            std::strncmp(field.c_str(), blanks.c_str(), static_cast<std::size_t>(width)) == 0;
        if (fits) number = static_cast<Number>(converted);
        return fits;
    }

    TQFortranInput library_;
    FileModel file_;
    std::size_t lineStart_ = 0;
    long lineNo_ = 1;
};

constexpr Step<Columns> steps[] = {
    {'l', &Columns::number<long>},
    {'L', &Columns::number<unsigned long>},
    {'i', &Columns::number<int>},
    {'s', &Columns::number<short, int>},
    {'S', &Columns::number<unsigned short, unsigned int>},
    {'F', &Columns::real},
    {'A', &Columns::text},
    {'b', &Columns::block},
    {'c', &Columns::character},
    {'X', &Columns::skip},
    {'n', &Columns::nextLine},
    {'r', &Columns::readAgain},
    {'k', &Columns::currentLine},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    FileInput input(data, size);
    Columns columns(input.content());
    runScript(columns, input.script(), steps);
    columns.expectSamePlace();
    return 0;
}
