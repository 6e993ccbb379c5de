#include "tqlib/datetime/TextForm.h"

#include <algorithm>
#include <cstring>

#include "tqlib/foundation/FormatNumber.h"
#include "tqlib/foundation/ScanNumber.h"

namespace tqlib::detail {

char *putAnyNumber(char *target, int value, unsigned width, char fill) {
    char digits[plainNumberRoom];
    bool const negative = value < 0;
    std::size_t const sign = negative ? 1 : 0;
    char const *const first = digits + sign;
    auto const length = static_cast<std::size_t>(formatNumber(digits, value) - first);
    std::size_t const padding = width > length + sign ? width - length - sign : 0;
    if (fill == ' ') target = std::fill_n(target, padding, ' ');
    if (negative) *target++ = '-';
    if (fill != ' ') target = std::fill_n(target, padding, fill);
    return std::copy_n(first, length, target);
}

Columns::Taken Columns::takeAny(char const *next, unsigned width) {
    char const *const end = next + strnlen(next, width);
    while (next != end && isWhiteSpace(*next))
        ++next;
    bool const negative = next != end && *next == '-';
    if (next != end && isSign(*next)) ++next;
    int value = 0;
    for (; next != end && isDigit(*next); ++next)
        value = value * 10 + (*next - '0');
    return {end, negative ? -value : value};
}

}  // namespace tqlib::detail
