// Reading of blank-separated items against a plain model. An input is a line and the file: the line
// holds a comma for a locale with a decimal comma, a digit for the size of transfers, and the
// steps.

#include "tqlib/records/TQTextInput.h"

#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/Check.h"
#include "support/FileInput.h"
#include "support/FileModel.h"

namespace {

/// How one of the targets of texts is read.
struct TextRules {
    bool skipsRun;            ///< of blanks and equals signs; else one blank
    std::string_view quotes;  ///< that strip themselves
    std::string_view stoppers;
};
constexpr TextRules stringRules{true, "\"'", " =\"'"};
constexpr TextRules baseRules{true, "\"", " =\"'"};
constexpr TextRules blockRules{false, "\"", " =\""};

/// The reader, character by character.
class Model {
  public:
    explicit Model(std::string content) : file_{std::move(content), 0, true} {}

    void nextLine() {
        line_.fill('\0');
        std::size_t count = 0;
        int c = file_.peek();
        for (; c >= 0 && c != '\n' && count < longestLine; c = file_.peek()) {
            line_[count++] = static_cast<char>(c);
            file_.skip();
        }
        if (c == '\n') file_.skip();
        state = c < 0 || line_[0] == '\0' ? 1 : 0;
        place_ = 0;
        ++lineNo;
    }

    char const *currentLine() {
        if (!place_) nextLine();
        return line_.data();
    }

    std::optional<std::string> number() {
        currentLine();
        while (isOneOf(" ="))
            ++*place_;
        if (line_[*place_] == '\0') return {};
        return take(" =").substr(0, 199);
    }

    std::optional<std::string> text(TextRules const &rules) {
        currentLine();
        while (isOneOf(rules.skipsRun ? " =" : " ")) {
            ++*place_;
            if (!rules.skipsRun) break;
        }
        if (isOneOf(rules.quotes)) ++*place_;
        if (line_[*place_] == '\0') return {};
        std::string item = take(rules.stoppers);
        if (isOneOf(rules.quotes)) ++*place_;
        return item;
    }

    int state = 0;
    long lineNo = 1;

  private:
    static constexpr std::size_t longestLine = 9191;

    bool isOneOf(std::string_view set) const {
        return set.find(line_[*place_]) != std::string_view::npos;
    }
    std::string take(std::string_view stoppers) {
        std::string item;
        while (line_[*place_] != '\0' && !isOneOf(stoppers))
            item += line_[(*place_)++];
        return item;
    }

    FileModel file_;
    std::array<char, longestLine + 1> line_{};
    std::optional<std::size_t> place_;  ///< nothing before the first line
};

template <typename Read>
bool succeeds(Read read) {
    try {
        read();
        return true;
    } catch (TQTextInput::Failure const &) {
        return false;
    }
}

template <typename Number>
constexpr char const *format = nullptr;
template <>
constexpr char const *format<double> = "%lf";
template <>
constexpr char const *format<float> = "%f";
template <>
constexpr char const *format<long> = "%ld";
template <>
constexpr char const *format<int> = "%d";
template <>
constexpr char const *format<unsigned long> = "%lu";
template <>
constexpr char const *format<unsigned int> = "%u";

class Reader {
  public:
    explicit Reader(std::string const &content) : library_(scratch().path(), 1), model_(content) {}

    template <typename Number, typename Converted = Number>
    void number(Input & /*script*/) {
        Number library{7}, expected{7};
        auto const item = model_.number();
        Converted converted;
        bool const fits = item && std::sscanf(item->c_str(), format<Converted>, &converted) == 1;
        if (fits) expected = static_cast<Number>(converted);
        expectSame("item taken", succeeds([&] { library_ >> &library; }), fits);
        expectSame("number", library, expected);
    }

    template <typename Text, TextRules const &rules>
    void text(Input & /*script*/) {
        Text library = "old";
        auto const item = model_.text(rules);
        expectSame("item taken", succeeds([&] { library_ >> library; }), item.has_value());
        expectSame("text", library.text(), item.value_or(""));
    }

    void block(Input & /*script*/) {
        std::vector<char> library(9192, 'x');
        auto const item = model_.text(blockRules);
        expectSame("item taken", succeeds([&] { library_ >> library.data(); }), item.has_value());
        library.back() = '\0';
        library[item ? library.size() - 1 : 1] = '\0';
        expectSame("text", library.data(), item.value_or("x"));
    }

    void nextLine(Input & /*script*/) {
        library_.nextline();
        model_.nextLine();
    }

    void currentLine(Input & /*script*/) {
        expectSame("line", library_.currentLine(), model_.currentLine());
    }

    void copy(Input & /*script*/) { library_ = TQTextInput(library_); }

    void expectSameState() {
        expectSame("state", library_.rdstate(), model_.state);
        expectSame("line number", library_.lineNumber(), model_.lineNo);
    }

  private:
    TQTextInput library_;
    Model model_;
};

constexpr Step<Reader> steps[] = {
    {'d', &Reader::number<double>},
    {'f', &Reader::number<float>},
    {'l', &Reader::number<long>},
    {'i', &Reader::number<int>},
    {'s', &Reader::number<short, int>},
    {'L', &Reader::number<unsigned long>},
    {'I', &Reader::number<unsigned int>},
    {'S', &Reader::number<unsigned short, unsigned int>},
    {'t', &Reader::text<TQString, stringRules>},
    {'c', &Reader::text<CString, baseRules>},
    {'p', &Reader::block},
    {'n', &Reader::nextLine},
    {'k', &Reader::currentLine},
    {'K', &Reader::copy},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    FileInput input(data, size);
    Reader reader(input.content());
    runScript(reader, input.script(), steps);
    reader.expectSameState();
    return 0;
}
