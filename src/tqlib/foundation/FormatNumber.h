#pragma once

#include <cstddef>

namespace tqlib::detail {

/// Writes `value` to `target` exactly as sprintf does with "%lf" in the locale in force, cut to
/// `size` - 1 characters and ended with a NUL. The result is the number of characters.
std::size_t formatSixDecimals(char *target, std::size_t size, double value);

}  // namespace tqlib::detail
