#include "tqlib/config/TQConfiguration.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "tqlib/config/SettingsDraft.h"
#include "tqlib/config/SettingsFile.h"
#include "tqlib/config/SettingsReader.h"

using tqlib::detail::SettingsDraft;
using tqlib::detail::SettingsFile;
using tqlib::detail::SettingsReader;

namespace {

// A copy that the caller releases with free, or null.
char *copyOf(std::string_view text) {
    auto *const copy = static_cast<char *>(std::malloc(text.size() + 1));
    if (copy == nullptr) return nullptr;
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

}  // namespace

TQConfiguration::TQConfiguration() : TQConfiguration(std::getenv("TQINI")) {}

TQConfiguration::TQConfiguration(char const *fileName)
    : file_(std::make_shared<SettingsFile>(fileName)) {
    opened_ = file_->isOpen() ? 1 : 0;
}

TQConfiguration::~TQConfiguration() = default;

char const *TQConfiguration::fileName() const {
    return opened_ != 0 ? file_->name().c_str() : "";
}

classic::fstream *TQConfiguration::stream() {
    isReady();
    return &file_->stream();
}

// True if the object is open and its file is the one of that name.
bool TQConfiguration::isReady() {
    return opened_ != 0 && file_->refresh();
}

// Puts the stream where `reader` stands, in the state in which reading line by line leaves it.
void TQConfiguration::leaveStreamBehind(SettingsReader const &reader) {
    using classic::ios;
    int const end = reader.isAtEnd() ? ios::eofbit | ios::failbit : ios::eofbit;
    int const state = reader.failed() ? end | ios::badbit : reader.metEnd() ? end : ios::goodbit;
    file_->place(reader.end(), state);
}

long TQConfiguration::searchCategorie(char const *category) {
    char room[tqlib::detail::headerRoom];
    std::string_view const header = tqlib::detail::headerOf(category, room);
    if (header.empty() || !isReady()) return -1;
    SettingsDraft const content(file_->descriptor());
    SettingsReader reader(content);
    bool const found = reader.findHeader(header);
    leaveStreamBehind(reader);
    return found ? static_cast<long>(reader.begin()) : -1;
}

char *TQConfiguration::getValue(char const *category, char const *name) {
    char room[tqlib::detail::headerRoom];
    std::string_view const header = tqlib::detail::headerOf(category, room);
    if (header.empty() || name == nullptr || !isReady()) return nullptr;
    SettingsDraft const content(file_->descriptor());
    SettingsReader reader(content);
    bool const found = reader.findHeader(header) && reader.findValue(name);
    leaveStreamBehind(reader);
    return found ? copyOf(reader.value()) : nullptr;
}

char *TQConfiguration::getProgramPath(char const *program) {
    return getValue(tqlib::detail::programCategory, program);
}

char *TQConfiguration::getProgramVersion(char const *program) {
    if (program == nullptr) return nullptr;
    return getValue(tqlib::detail::programCategory, tqlib::detail::versionNameOf(program).c_str());
}
