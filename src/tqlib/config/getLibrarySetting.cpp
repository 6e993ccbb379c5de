#include "tqlib/config/getLibrarySetting.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "tqlib/config/TQConfiguration.h"

namespace {

constexpr std::size_t longestName = 1023;  // of the environment variable

}  // namespace

char *getLibrarySetting(char const *name) {
    if (name == nullptr) return nullptr;
    std::string const variable = std::string("TQ") + name;
    if (variable.size() > longestName) return nullptr;
    char const *const text = std::getenv(variable.c_str());
    return text != nullptr ? strdup(text) : TQConfiguration().getValue("TQ", name);
}
