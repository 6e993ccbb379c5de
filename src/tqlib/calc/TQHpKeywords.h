#pragma once

#include <cstdint>
#include <string_view>

namespace tqlib::detail {

/// The number of command numbers: they go from 0 to 35.
inline constexpr int commandCount = 36;

/// The command number of the keyword `token`, whatever its case, or -1 if it is none.
int findKeyword(std::string_view token);

/// True if `token` in capitals is `name`.
bool equalsInCapitals(std::string_view token, char const *name);

}  // namespace tqlib::detail
