#include "Arguments.h"

#include <cctype>
#include <string_view>

#include "Errors.h"
#include "Words.h"

namespace messwerk {
namespace {

// The library parts a command line at its blanks and knows no quotes, while a word of the shell may
// hold blanks or nothing at all. So on their way through the library such words have an escape and
// a letter in the place of each blank, and an escape alone stands for an empty word.
constexpr char escape = '\x1B';
constexpr int distance = 64;  // from a blank to its letter

bool isEscaped(char c) {
    return c == escape || std::isspace(static_cast<unsigned char>(c)) != 0;
}

std::string encoded(std::string_view word) {
    std::string code(word.empty() ? 1 : 0, escape);
    for (char const c : word) {
        if (isEscaped(c)) code += escape;
        code += isEscaped(c) ? static_cast<char>(c + distance) : c;
    }
    return code;
}

std::string decoded(std::string_view code) {
    std::string word;
    for (std::size_t i = 0; i < code.size(); ++i)
        if (code[i] != escape)
            word += code[i];
        else if (++i < code.size())
            word += static_cast<char>(code[i] - distance);
    return word;
}

std::string commandLine(int argc, char const *const *argv) {
    std::string line;
    for (int i = 0; i < argc; ++i)
        line += encoded(argv[i]) + ' ';
    return line;
}

}  // namespace

Arguments::Arguments(int argc, char const *const *argv) : words_(commandLine(argc, argv).c_str()) {}

bool Arguments::take(char const *option) {
    return words_.checkOption(option) != 0;
}

std::optional<std::string> Arguments::takeValue(char const *option) {
    char *value = nullptr;
    if (words_.checkOption(option, &value) == 0) return std::nullopt;
    if (*value == '\0') throw UsageError("the option " + quoted(option) + " needs a value");
    return decoded(value);
}

std::vector<std::string> Arguments::rest() const {
    std::vector<std::string> words;
    for (int i = 1; i <= words_.count(); ++i) {
        std::string const word = decoded(words_[i]);
        if (word.size() > 1 && word.starts_with('-'))
            throw UsageError("there is no option " + quoted(word));
        words.push_back(word);
    }
    return words;
}

}  // namespace messwerk
