// Command lines against a plain model of their rules, and argument lists out of which options are
// taken. An input is a command line; with a backquote in it, lines with options follow.

#include "tqplatform/kernel/CommandLine.h"

#include <cctype>
#include <optional>
#include <string>
#include <vector>

#include "support/Check.h"
#include "support/Input.h"
#include "tqlib/files/TQArgv.h"

namespace {

using Words = std::vector<std::string>;

void expectSameWords(char const *what, Words const &library, Words const &model) {
    expectSame(what, library.size(), model.size());
    for (std::size_t i = 0; i < model.size(); ++i)
        expectSame(what, library[i], model[i]);
}

// One character after the other. Backslashes wait until it shows what follows them.
Words split(std::string const &line) {
    Words words;
    std::optional<std::string> word;
    std::size_t backslashes = 0;
    bool quoted = false;
    auto const add = [&](std::size_t count, char c) {
        if (!word) word.emplace();
        word->append(count, c);
    };
    for (char const c : line + '\0') {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        bool const literalQuote = c == '"' && backslashes % 2 == 1;
        if (backslashes > 0) add(c == '"' ? backslashes / 2 : backslashes, '\\');
        backslashes = 0;
        bool const ends = c == '\0' || (!quoted && (c == ' ' || c == '\t'));
        if (ends && word) {
            words.push_back(*word);
            word.reset();
        } else if (c == '"' && !literalQuote) {
            quoted = !quoted;
            add(0, c);
        } else if (!ends) {
            add(1, c);
        }
    }
    return words;
}

Words splitAtBlanks(std::string const &line) {
    Words words;
    bool inWord = false;
    for (char const c : line) {
        bool const blank = std::isspace(static_cast<unsigned char>(c)) != 0;
        if (!blank && !inWord) words.emplace_back();
        if (!blank) words.back() += c;
        inWord = !blank;
    }
    return words;
}

std::optional<std::size_t> find(Words const &words, std::string const &option) {
    for (std::size_t i = 0; i < words.size(); ++i)
        if (words[i] == option) return i;
    return {};
}

void checkOptions(std::string const &line, Input &options) {
    TQArgv arguments(line.c_str());
    Words words = splitAtBlanks(line);
    if (!words.empty()) words.erase(words.begin());
    while (!options.atEnd()) {
        bool const withValue = options.pick(2) == 1;
        std::string const option = std::string(options.text('\n')).c_str();
        auto const found = find(words, option);
        char *value = nullptr;
        int const taken = withValue ? arguments.checkOption(option.c_str(), &value)
                                    : arguments.checkOption(option.c_str());
        expectSame("checkOption", taken, found ? 1 : 0);
        if (!found) continue;
        auto const at = words.begin() + static_cast<std::ptrdiff_t>(*found);
        bool const hasValue = withValue && at + 1 != words.end();
        if (withValue) expectSame("value", value, hasValue ? at[1] : "");
        words.erase(at, at + (hasValue ? 2 : 1));
    }
    Words left;
    for (int i = 1; i <= arguments.count(); ++i)
        left.emplace_back(arguments[i]);
    expectSameWords("arguments", left, words);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    std::string const line = std::string(expanded(input.text('`'))).c_str();
    Words const words = tqplatform::splitCommandLine(line);
    expectSameWords("splitCommandLine", words, split(line));
    expectSameWords("joinCommandLine",
                    tqplatform::splitCommandLine(tqplatform::joinCommandLine(words)), words);
    checkOptions(line, input);
    return 0;
}
