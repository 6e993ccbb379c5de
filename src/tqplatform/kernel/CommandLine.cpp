#include "tqplatform/kernel/CommandLine.h"

#include <fcntl.h>

#include <algorithm>
#include <climits>

#include "tqplatform/runtime/Descriptor.h"
#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace tqplatform {
namespace {

constexpr std::string_view separators = " \t";
constexpr std::string_view quotedCharacters = " \t\n\v\f\r\"";
constexpr char quote = '"';
constexpr char backslash = '\\';

// Takes the backslashes at the start of `line`, and the quote behind an odd number of them.
void takeBackslashes(std::string_view &line, std::string &word) {
    std::size_t const count = std::min(line.find_first_not_of(backslash), line.size());
    line.remove_prefix(count);
    if (!line.starts_with(quote)) {
        word.append(count, backslash);
        return;
    }
    word.append(count / 2, backslash);
    if (count % 2 == 0) return;
    word += quote;
    line.remove_prefix(1);
}

// Takes the word at the start of `line`.
std::string takeWord(std::string_view &line) {
    std::string word;
    for (bool quoted = false; !line.empty();) {
        char const c = line.front();
        if (!quoted && separators.find(c) != std::string_view::npos) break;
        if (c == backslash) {
            takeBackslashes(line, word);
            continue;
        }
        line.remove_prefix(1);
        if (c == quote)
            quoted = !quoted;
        else
            word += c;
    }
    return word;
}

void appendQuoted(std::string &line, std::string_view word) {
    line += quote;
    std::size_t backslashes = 0;  // directly ahead
    for (char const c : word) {
        if (c == quote) line.append(backslashes + 1, backslash);
        line += c;
        backslashes = c == backslash ? backslashes + 1 : 0;
    }
    line.append(backslashes, backslash);
    line += quote;
}

std::string contentOf(char const *path) {
    std::string content;
    Descriptor const file(openFile(path, O_RDONLY, 0));
    if (!file.isOpen()) return content;
    char block[4096];
    for (ssize_t got; (got = readFile(file.number(), block, sizeof block)) > 0;)
        content.append(block, static_cast<std::size_t>(got));
    return content;
}

std::string ownCommandLine() {
    std::string const content = contentOf("/proc/self/cmdline");  // a NUL behind each word
    std::vector<std::string> words;
    for (std::size_t at = 0; at < content.size(); at += words.back().size() + 1)
        words.emplace_back(content.c_str() + at);
    return joinCommandLine(words);
}

std::string ownPath() {
    char path[PATH_MAX + 1] = {};
    ssize_t const length = systemCalls.readLink("/proc/self/exe", path, PATH_MAX);
    if (length < 0) return {};
    std::string_view program(path, static_cast<std::size_t>(length));
    // The system's note that the file has been replaced since.
    constexpr std::string_view note = " (deleted)";
    if (program.ends_with(note) && systemCalls.access(path, F_OK) != 0)
        program.remove_suffix(note.size());
    return fromHostPath(program);
}

}  // namespace

std::vector<std::string> splitCommandLine(std::string_view commandLine) {
    std::vector<std::string> words;
    for (std::size_t at; (at = commandLine.find_first_not_of(separators)) != commandLine.npos;) {
        commandLine.remove_prefix(at);
        words.push_back(takeWord(commandLine));
    }
    return words;
}

std::string joinCommandLine(std::vector<std::string> const &words) {
    std::string line;
    for (std::string const &word : words) {
        if (&word != &words.front()) line += ' ';
        if (word.empty() || word.find_first_of(quotedCharacters) != word.npos)
            appendQuoted(line, word);
        else
            line += word;
    }
    return line;
}

}  // namespace tqplatform

char const *GetCommandLineA() {
    // Never destroyed: static objects of the host may ask for it in their destructors.
    static auto const *const commandLine = new std::string(tqplatform::ownCommandLine());
    return commandLine->c_str();
}

unsigned int GetModuleFileNameA(HINSTANCE module, char *buffer, unsigned int size) {
    if (buffer == nullptr || size == 0) return 0;
    std::string const name = module == nullptr ? tqplatform::ownPath() : module->name;
    buffer[name.copy(buffer, size - 1)] = '\0';
    return name.size() < size ? static_cast<unsigned int>(name.size()) : size;
}
