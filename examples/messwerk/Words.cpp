#include "Words.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "tqlib/tqlib.h"

namespace messwerk {
namespace {

// In bytes. The question whether a file is to be replaced has no room for a longer path.
constexpr std::size_t longestShown = 40, longestPathShown = 35, dots = 3;

bool isBlank(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// The number of bytes that the letter at the beginning of `text` has in UTF-8; 0 if there is none
/// that could be shown: a control character, or a byte that belongs to no letter.
std::size_t letterLength(std::string_view text) {
    auto const first = static_cast<unsigned char>(text[0]);
    if (first < 0x80) return std::iscntrl(first) != 0 ? 0 : 1;
    std::size_t const length = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (first >= 0xF5 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if (!isContinuation(text[i])) return 0;
    bool const isControl = first == 0xC2 && static_cast<unsigned char>(text[1]) < 0xA0;
    return isControl ? 0 : length;
}

/// The letters of `text` that begin ahead of the place `end`, as far as they can be shown.
std::string visible(std::string_view text, std::size_t end) {
    std::string shown;
    for (std::size_t at = 0; at < std::min(text.size(), end);) {
        std::size_t const length = letterLength(text.substr(at));
        shown += length == 0 ? "?" : text.substr(at, length);
        at += std::max<std::size_t>(length, 1);
    }
    return shown;
}

}  // namespace

std::optional<double> wholeNumber(char const *text) {
    char *end = nullptr;
    double const value = std::strtod(text, &end);
    if (end == text) return std::nullopt;
    while (isBlank(*end))
        ++end;
    return *end == '\0' ? std::optional(value) : std::nullopt;
}

std::string toCapitals(std::string_view text) {
    std::string capitals(text);
    for (char &c : capitals)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return capitals;
}

// Keywords come before variables. So a variable that has the word for its name is reached only if
// the word is no keyword.
bool isKeyword(std::string const &word) {
    TQHpCalculator calculator;
    double marker = 4711.0;  // no keyword makes this from the values below
    calculator.addVariable(word.c_str(), &marker);
    calculator.calculate("1 1");
    return calculator.calculate(word.c_str()) != marker;
}

std::string quoted(std::string_view text) {
    bool const isLong = text.size() > longestShown;
    std::size_t const end = isLong ? longestShown - dots : text.size();
    return '"' + visible(text, end) + (isLong ? "...\"" : "\"");
}

std::string quotedPath(std::string_view path) {
    bool const isLong = path.size() > longestPathShown;
    if (isLong) path.remove_prefix(path.size() - longestPathShown + dots);
    while (isLong && !path.empty() && isContinuation(path[0]))
        path.remove_prefix(1);
    return (isLong ? "\"..." : "\"") + visible(path, path.size()) + '"';
}

std::string counted(long count, std::string const &noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

}  // namespace messwerk
