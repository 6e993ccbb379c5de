#include "Names.h"

#include <algorithm>
#include <cctype>

#include "Errors.h"
#include "Words.h"

namespace messwerk {
namespace {

// An equals sign ends a result's name on the command line.
constexpr std::string_view reserved = "\"=";

// In a profile a line that begins so is a comment or the header of a category.
constexpr std::string_view otherLines = "#[";

std::string characterFault(std::string const &name, char separator) {
    for (char const c : name) {
        auto const byte = static_cast<unsigned char>(c);
        if (std::isspace(byte) != 0) return "contains a blank";
        if (std::iscntrl(byte) != 0) return "contains a control character";
        if (reserved.find(c) != std::string_view::npos || c == separator)
            return "contains " + quoted({&c, 1});
    }
    return {};
}

// What is wrong with `name`; empty if nothing is.
std::string fault(std::string const &name, char separator) {
    if (name.empty()) return "is empty";
    if (otherLines.find(name[0]) != std::string_view::npos)
        return "begins with " + quoted({name.data(), 1});
    std::string reason = characterFault(name, separator);
    if (!reason.empty()) return reason;
    if (wholeNumber(name.c_str())) return "is a number";
    if (isKeyword(toCapitals(name))) return "is a keyword of the calculator";
    return {};
}

}  // namespace

void Names::add(Column const &column) {
    if (column.kind == ColumnKind::Omitted) return;
    std::string reason = fault(column.name, separator_);
    if (reason.empty() && !names_.emplace(toCapitals(column.name), column.kind).second)
        reason = "is there twice; capitals and small letters are the same";
    if (!reason.empty()) throw UsageError("the name " + quoted(column.name) + " " + reason);
}

std::optional<ColumnKind> Names::kindOf(std::string const &word) const {
    auto const found = names_.find(toCapitals(word));
    return found == names_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace messwerk
