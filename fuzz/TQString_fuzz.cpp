// The string against plain models. The first byte of an input says what is tried: "m" wildcards,
// "l" wildcards on long texts, "t" tokens, "n" and "," numbers in a locale with a decimal point or
// comma, anything else edits.

#include "tqlib/foundation/TQString.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include "support/Check.h"
#include "support/Input.h"
#include "support/NumberLocale.h"

namespace {

TQString toText(std::string_view text) {
    TQString result;
    text.copy(result.GetBufferSetLength(static_cast<int>(text.size())), text.size());
    return result;
}

// The matcher as it is told: each star tries every place, and the walk goes on from the one found.

bool scan(char const *&pattern, char const *&text);

bool match(char const *pattern, char const *text) {
    bool fits = true;
    while (fits && *pattern != '\0' && *text != '\0') {
        if (*pattern == '*') {
            fits = scan(pattern, text);
        } else {
            fits = *pattern == '?' || *pattern == *text;
            ++pattern;
            ++text;
        }
    }
    while (*pattern == '*')
        ++pattern;
    return fits && *pattern == '\0' && *text == '\0';
}

bool scan(char const *&pattern, char const *&text) {
    ++pattern;
    for (; *text != '\0' && (*pattern == '?' || *pattern == '*'); ++pattern)
        if (*pattern == '?') ++text;
    while (*pattern == '*')
        ++pattern;
    if (*text == '\0') return *pattern == '\0';
    for (; *text != '\0'; ++text)
        if (*text == *pattern && match(pattern, text)) return true;
    return *pattern == '\0';
}

void tryMatch(Input &input) {
    // The model takes exponential time.
    std::string pattern = std::string(input.text('|').c_str()).substr(0, 12);
    std::string text = std::string(input.text('|').c_str()).substr(0, 18);
    bool const fits = match(pattern.c_str(), text.c_str());
    expectSame("match", TQString::Match(pattern.c_str(), text.c_str()), fits);
    expectSame("search", TQString(text.c_str()).Search(pattern.c_str()), fits);
    if (pattern.empty() || pattern[0] != '*') return;

    char *libraryPattern = pattern.data(), *libraryText = text.data();
    char const *modelPattern = pattern.data(), *modelText = text.data();
    bool const found = TQString::Scan(libraryPattern, libraryText);
    expectSame("scan", found, scan(modelPattern, modelText));
    expectSame("pattern left", libraryPattern, modelPattern);
    expectSame("text left", libraryText, modelText);
}

std::string repeated(std::string const &piece, std::size_t length) {
    std::string result;
    while (!piece.empty() && result.size() < length)
        result += piece;
    return result;
}

// Here only the time counts, which libFuzzer watches: it must not grow faster than the product of
// the lengths.
void tryLongMatch(Input &input) {
    std::string const pattern = repeated(input.text('|'), 400) + input.text('|');
    std::string const text = repeated(input.text('|'), 4000) + input.text('|');
    bool const fits = TQString::Match(pattern.c_str(), text.c_str());
    expectSame("search", TQString(text.c_str()).Search(pattern.c_str()), fits);
    if (pattern[0] != '*') return;
    std::string patternCopy = pattern, textCopy = text;
    char *patternRest = patternCopy.data(), *textRest = textCopy.data();
    expectSame("scan", TQString::Scan(patternRest, textRest), fits);
}

struct Token {
    std::string text;
    int next;
};

Token tokenOf(std::string const &text, std::size_t start, std::string const &separators,
              bool skip) {
    std::string const rest = text.substr(std::min(start, text.size()));
    std::size_t next = rest.find_first_of(separators);
    if (next == std::string::npos) return {rest, -1};
    Token token{rest.substr(0, next), 0};
    ++next;
    while (skip && next < rest.size() && separators.find(rest[next]) != std::string::npos)
        ++next;
    token.next = static_cast<int>(start + next);
    return token;
}

void tryTokens(Input &input) {
    std::string const separators = input.text('|');
    std::string const text = input.rest();
    TQString const library = toText(text), librarySeparators = toText(separators);
    for (int start = -1; start < library.GetLength() + 2; ++start) {
        for (int const skip : {0, 1}) {
            auto const from = static_cast<std::size_t>(std::max(start, 0));
            Token const model = tokenOf(text, from, separators, skip != 0);
            TQString token = "old";
            expectSame("next", library.GetToken(token, start, librarySeparators, skip), model.next);
            expectSame("token", token.text(), model.text);

            TQString self = library;
            expectSame("next", self.GetToken(self, start, librarySeparators, skip), model.next);
            expectSame("token in the text itself", self.text(), model.text);
            TQString own = librarySeparators;
            expectSame("next", library.GetToken(own, start, own, skip), model.next);
            expectSame("token in the separators", own.text(), model.text);
        }
    }
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::int32_t digitsOf(char const *text, unsigned long length, unsigned long &pos) {
    std::uint32_t number = 0;
    for (; pos < length && isDigit(text[pos]); ++pos)
        number = number * 10 + static_cast<std::uint32_t>(text[pos] - '0');
    return static_cast<std::int32_t>(number);
}

double numberAt(char const *text, unsigned long length, unsigned long &pos) {
    if (length == 0) return 0.0;
    double const sign = text[pos] == '-' ? -1 : 1;
    if (text[pos] == '-' || text[pos] == '+') ++pos;
    std::int32_t const whole = digitsOf(text, length, pos);
    if (pos >= length || text[pos] != '.') return sign * whole;
    unsigned long const first = ++pos;
    std::int32_t const fraction = digitsOf(text, length, pos);
    return sign * (whole + fraction / std::pow(10.0, static_cast<double>(pos - first)));
}

double firstNumber(std::string const &whole) {
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string const text = whole.substr(i);
        std::size_t const sign = text[0] == '+' || text[0] == '-' ? 1 : 0;
        std::size_t const point = text.c_str()[sign] == '.' ? 1 : 0;
        if (!isDigit(text.c_str()[sign + point])) continue;
        unsigned long pos = 0;
        double const mantissa = numberAt(text.c_str(), text.size(), pos);
        if (text.c_str()[pos] != 'e' && text.c_str()[pos] != 'E') return mantissa;
        double const exponent = numberAt(text.c_str(), text.size(), ++pos);
        return exponent != 0.0 ? mantissa * std::pow(10.0, exponent) : mantissa;
    }
    return 0.0;
}

std::string scientific(double value) {
    double const exponent = value == 0.0 ? 0.0 : std::floor(std::log10(std::fabs(value)));
    double const mantissa = value == 0.0 ? 0.0 : value / std::pow(10.0, exponent);
    bool const finite = std::isfinite(value);
    char text[400];
    std::snprintf(text, sizeof text, "%.2lfE%d", finite ? mantissa : value,
                  finite ? static_cast<int>(exponent) : 0);
    return text;
}

template <typename Number>
void tryScanf(TQString const &text, char const *format) {
    Number library{7}, model{7};
    int const result = std::sscanf(text, format, &model) == 0 ? 0 : 1;
    expectSame("result of the scan", text.Scanf(library), result);
    expectSame("scanned", library, model);
}

void tryNumbers(Input &input, bool comma) {
    NumberLocale const locale(comma);
    TQString library;
    auto const value = input.raw<double>();
    expectSame("result of the format", library.DoubleFormat(value), 1);
    expectSame("scientific", library.text(), scientific(value));

    std::string text = input.rest();
    library = toText(text);
    double const number = library.GetDouble(), model = firstNumber(text);
    if (!std::isnan(number) || !std::isnan(model)) expectSame("first number", number, model);
    tryScanf<double>(library, "%lf");
    tryScanf<int>(library, "%d");

    library.RemoveLastDigits();
    while (!text.empty() && isDigit(text.back()))
        text.pop_back();
    expectSame("without last digits", library.text(), text.c_str());
}

constexpr char whiteSpace[] = " \t\n\v\f\r";

class Edits {
  public:
    void append(Input & /*script*/) {
        library() += libraries_[other()];
        model() += std::string(models_[other()]);
        cut();
    }
    void appendCharacter(Input &script) {
        char const c = script.take();
        library() += c;
        model() += c;
    }
    void appendOwnTail(Input &script) {
        std::size_t const from = takeIndex(script);
        library() += static_cast<char const *>(library()) + from;
        model() += std::string(model().c_str() + from);
        cut();
    }
    void assignOwnTail(Input &script) {
        std::size_t const from = takeIndex(script);
        library() = static_cast<char const *>(library()) + from;
        model() = std::string(model().c_str() + from);
    }
    void assignText(Input &script) {
        model() = script.text('|');
        library() = toText(model());
    }
    void assign(Input & /*script*/) {
        library() = libraries_[other()];
        model() = std::string(models_[other()]);
    }
    void move(Input & /*script*/) {
        if (other() == current_) return;
        library() = std::move(libraries_[other()]);
        model() = std::move(models_[other()]);
        libraries_[other()].Empty();
        models_[other()].clear();
    }
    void join(Input & /*script*/) {
        library() = libraries_[other()] + library();
        model() = models_[other()] + model();
        cut();
    }
    void left(Input &script) {
        int const count = takeCount(script);
        library() = library().Left(count);
        model() = model().substr(0, atLeastZero(count));
    }
    void right(Input &script) {
        int const count = takeCount(script);
        library() = library().Right(count);
        model() = model().substr(model().size() - std::min(model().size(), atLeastZero(count)));
    }
    void mid(Input &script) {
        int const first = takeCount(script);
        int const count = takeCount(script);
        bool const toEnd = count == 7;
        library() = toEnd ? library().Mid(first) : library().Mid(first, count);
        model() = model().substr(std::min(model().size(), atLeastZero(first)),
                                 toEnd ? std::string::npos : atLeastZero(count));
    }
    void find(Input &script) {
        std::string const text = script.text('|').c_str();
        char const c = script.take();
        expectSame("find", library().Find(text.c_str()), indexOf(model().find(text)));
        expectSame("find one of", library().FindOneOf(text.c_str()),
                   indexOf(model().find_first_of(text)));
        expectSame("find last", library().ReverseFind(c), indexOf(model().rfind(c)));
        expectSame("count", library().CountChar(c),
                   static_cast<int>(std::count(model().begin(), model().end(), c)));
        expectSame("last", library().Last(), model().empty() ? '\0' : model().back());
    }
    void trimLeft(Input & /*script*/) {
        library().TrimLeft();
        model().erase(0, model().find_first_not_of(whiteSpace));
    }
    void trimRight(Input & /*script*/) {
        library().TrimRight();
        model().resize(model().find_last_not_of(whiteSpace) + 1);
    }
    void trim(Input &script) {
        library().Trim();
        TQString const trimmed = library();
        libraries_[current_] = toText(model());
        trimRight(script);
        trimLeft(script);
        expectSame("trimmed", trimmed.text(), model());
    }
    void replace(Input &script) {
        char const from = script.take();
        char const to = script.take();
        int const count = static_cast<int>(std::count(model().begin(), model().end(), from));
        std::replace(model().begin(), model().end(), from, to);
        expectSame("replaced", library().ReplaceChar(from, to), count);
        endAtNul();
    }
    void remove(Input &script) {
        std::string const chars = script.text('|');
        library().RemoveChars(toText(chars));
        std::erase_if(model(), [&](char c) { return chars.find(c) != std::string::npos; });
        endAtNul();
    }
    void linesToCommas(Input & /*script*/) {
        library().ConvertCtrlEnterToCSV();
        std::replace(model().begin(), model().end(), '\r', ',');
        std::replace(model().begin(), model().end(), '\n', ' ');
        endAtNul();
    }
    void commasToLines(Input & /*script*/) {
        library().ConvertCSVToCtrlEnter();
        for (auto at = model().find(", "); at != std::string::npos; at = model().find(", "))
            model().replace(at, 2, "\r\n");
        endAtNul();
    }
    void fromDos(Input & /*script*/) {
        library().ConvertDosToWindows();
        constexpr std::string_view dos = "\xE1\x84\x94\x81\x8E\x99\x9A";
        constexpr std::string_view windows = "\xDF\xE4\xF6\xFC\xC4\xD6\xDC";
        for (char &c : model())
            if (dos.find(c) != std::string_view::npos) c = windows[dos.find(c)];
        endAtNul();
    }
    void changeInBuffer(Input &script) {
        std::string const text = script.text('|');
        int const room = std::max(library().GetLength(), static_cast<int>(text.size()));
        char *const buffer = library().GetBuffer(room);
        std::memcpy(buffer, text.c_str(), text.size());
        if (text.size() >= model().size()) buffer[text.size()] = '\0';
        library().ReleaseBuffer(-1);
        model().replace(0, text.size(), text);
        endAtNul();
    }
    void format(Input & /*script*/) {
        library().Format("%s|%d", static_cast<char const *>(library()), 12);
        model() = std::string(model().c_str()) + "|12";
    }
    void empty(Input & /*script*/) {
        library().Empty();
        model().clear();
    }
    void choose(Input &script) {
        current_ = script.pick(3);
        other_ = script.pick(3);
    }

    void expectSameTexts() const {
        for (std::size_t i = 0; i < models_.size(); ++i) {
            TQString const &text = libraries_[i];
            expectSame("text", text.text(), models_[i]);
            expectSame("terminator", static_cast<char const *>(text)[text.GetLength()], '\0');
        }
        expectSame("equal", libraries_[0] == libraries_[1], models_[0] == models_[1]);
        expectSame("less", libraries_[0] < libraries_[1], models_[0] < models_[1]);
    }

  private:
    static constexpr std::size_t longest = 3000;

    static int indexOf(std::size_t found) {
        return found == std::string::npos ? -1 : static_cast<int>(found);
    }
    static std::size_t atLeastZero(int count) {
        return static_cast<std::size_t>(std::max(count, 0));
    }
    static int takeCount(Input &script) { return std::atoi(script.text('|').c_str()); }

    TQString &library() { return libraries_[current_]; }
    std::string &model() { return models_[current_]; }
    std::size_t other() const { return other_; }
    std::size_t takeIndex(Input &script) { return script.pick(256) % (model().size() + 1); }

    void cut() {
        if (model().size() <= longest) return;
        model().resize(longest);
        library() = library().Left(longest);
    }
    void endAtNul() { model() = std::string(model().c_str()); }

    std::array<TQString, 3> libraries_;
    std::array<std::string, 3> models_;
    std::size_t current_ = 0;
    std::size_t other_ = 1;
};

constexpr Step<Edits> steps[] = {
    {'+', &Edits::append},
    {'c', &Edits::appendCharacter},
    {'a', &Edits::appendOwnTail},
    {'A', &Edits::assignOwnTail},
    {'"', &Edits::assignText},
    {'=', &Edits::assign},
    {'m', &Edits::move},
    {'j', &Edits::join},
    {'L', &Edits::left},
    {'R', &Edits::right},
    {'M', &Edits::mid},
    {'F', &Edits::find},
    {'<', &Edits::trimLeft},
    {'>', &Edits::trimRight},
    {'T', &Edits::trim},
    {'r', &Edits::replace},
    {'x', &Edits::remove},
    {'l', &Edits::linesToCommas},
    {',', &Edits::commasToLines},
    {'d', &Edits::fromDos},
    {'b', &Edits::changeInBuffer},
    {'f', &Edits::format},
    {'e', &Edits::empty},
    {'o', &Edits::choose},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    char const what = input.take();
    if (what == 'm') {
        tryMatch(input);
    } else if (what == 'l') {
        tryLongMatch(input);
    } else if (what == 't') {
        tryTokens(input);
    } else if (what == 'n' || what == ',') {
        tryNumbers(input, what == ',');
    } else {
        Edits edits;
        runScript(edits, input, steps);
        edits.expectSameTexts();
    }
    return 0;
}
