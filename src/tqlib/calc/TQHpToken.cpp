#include "tqlib/calc/TQHpToken.h"

#include <algorithm>
#include <array>

namespace tqlib::detail {

std::uint64_t keyInCapitals(std::string_view text) {
    std::array<char, keyLength> capitals;
    std::size_t const length = std::min(text.size(), keyLength);
    std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length),
                   capitals.begin(), toCapital);
    return keyOf({capitals.data(), length});
}

}  // namespace tqlib::detail
