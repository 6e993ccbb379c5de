#include "tqlib/dialogs/NumberText.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace tqlib::detail {
namespace {

/// What a format may ask for.
struct Kind {
    std::string_view conversions;
    std::string_view lengths[4];
};
constexpr Kind doubles{"aAeEfFgG", {"", "l", "L"}};
constexpr Kind ints{"diouxXc", {"", "l", "h", "hh"}};
constexpr std::string_view flagsAndNumbers = "-+ #0123456789.";
constexpr std::string_view lengthLetters = "hlL";

// True if `format` asks for one number of that kind at most: another one would read what isn't
// there. The lengths "l" and "L" are taken out of it, since where such formats come from a long is
// as wide as an int, and a long double as a double.
bool adapt(std::string &format, Kind const &kind) {
    int count = 0;
    for (std::size_t place = format.find('%'); place != std::string::npos;
         place = format.find('%', place + 1)) {
        place = std::min(format.find_first_not_of(flagsAndNumbers, place + 1), format.size());
        std::size_t const end = format.find_first_not_of(lengthLetters, place);
        if (end == std::string::npos) return false;
        if (format[end] == '%' && end == place) continue;
        std::string const length = format.substr(place, end - place);
        bool const fits = kind.conversions.find(format[end]) != std::string_view::npos &&
                          std::ranges::find(kind.lengths, length) != std::end(kind.lengths);
        if (!fits || ++count > 1) return false;
        if (length == "l" || length == "L") format.erase(place, 1);
    }
    return true;
}

template <typename Number>
TQString formatNumber(Number value, TQString format, Kind const &kind) {
    std::string adapted(format.text());
    if (adapt(adapted, kind)) format.Format(adapted.c_str(), value);
    return format.Trim();
}

}  // namespace

TQString FormatDoubleText(double value, TQString format) {
    return formatNumber(value, std::move(format), doubles);
}

TQString FormatIntText(int value, TQString format) {
    return formatNumber(value, std::move(format), ints);
}

TQString formatDouble(double value, TQString format) {
    if (format.text() != "SCIENTIFIC") return FormatDoubleText(value, std::move(format));
    format.DoubleFormat(value);
    return format;
}

}  // namespace tqlib::detail
