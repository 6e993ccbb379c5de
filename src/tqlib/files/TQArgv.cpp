#include "tqlib/files/TQArgv.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "tqplatform/kernel/CommandLine.h"

namespace {

constexpr unsigned int pathSize = 260;  // the NUL included

std::vector<char> copyOf(char const *text) {
    return {text, text + std::strlen(text) + 1};
}

}  // namespace

TQArgv::TQArgv() {
    set(GetCommandLineA());
}

TQArgv::TQArgv(char const *commandLine) {
    set(commandLine == nullptr ? "" : commandLine);
    if (count() > 0) argv_.erase(argv_.begin() + 1);
}

TQArgv::TQArgv(TQArgv const &other)
    : argv_(other.argv_), text_(other.text_), program_(other.program_) {
    argv_.front() = program_.data();
    for (auto entry = argv_.begin() + 1; entry != argv_.end(); ++entry)
        *entry = text_.data() + (*entry - other.text_.data());
}

TQArgv &TQArgv::operator=(TQArgv const &other) {
    if (this == &other) return *this;  // its texts are in use
    TQArgv copy(other);
    argv_.swap(copy.argv_);
    text_.swap(copy.text_);
    program_.swap(copy.program_);
    return *this;
}

TQArgv::~TQArgv() = default;

// Entry 0 and all words behind it.
void TQArgv::set(char const *commandLine) {
    char path[pathSize];
    GetModuleFileNameA(nullptr, path, sizeof path);
    program_ = copyOf(path);
    text_ = copyOf(commandLine);
    argv_ = {program_.data()};
    bool inWord = false;
    for (char &c : text_) {
        if (std::isspace(static_cast<unsigned char>(c)) != 0) c = '\0';
        if (c != '\0' && !inWord) argv_.push_back(&c);
        inWord = c != '\0';
    }
}

char *TQArgv::operator[](int index) const {
    return index < 0 || index > count() ? nullptr : argv_[static_cast<std::size_t>(index)];
}

TQArgv::Entry TQArgv::find(char const *option) {
    if (option == nullptr) return argv_.end();
    return std::find(argv_.begin() + 1, argv_.end(), std::string_view(option));
}

int TQArgv::checkOption(char const *option) {
    Entry const found = find(option);
    if (found == argv_.end()) return 0;
    argv_.erase(found);
    return 1;
}

int TQArgv::checkOption(char const *option, char **value) {
    Entry const found = find(option);
    if (found == argv_.end()) return 0;
    bool const last = found + 1 == argv_.end();
    if (value != nullptr) *value = last ? *found + std::strlen(*found) : found[1];
    argv_.erase(found, found + (last ? 1 : 2));
    return 1;
}
