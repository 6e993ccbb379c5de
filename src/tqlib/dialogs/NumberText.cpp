#include "tqlib/dialogs/NumberText.h"

#include <string_view>
#include <utility>

namespace tqlib::detail {
namespace {

constexpr std::string_view doubleConversions = "aAeEfFgG";
constexpr std::string_view intConversions = "diouxXc";
constexpr std::string_view flagsAndNumbers = "-+ #0123456789.";

/// What a format asks for.
struct Demand {
    bool isOneAtMost = true;  ///< and of the wanted kind
    bool isLong = false;
};

// A format that asks for other arguments than there are would read what isn't there.
Demand demandOf(std::string_view format, std::string_view conversions) {
    Demand demand;
    int count = 0;
    for (std::size_t place = format.find('%'); place != std::string_view::npos;
         place = format.find('%', place + 1)) {
        place = format.find_first_not_of(flagsAndNumbers, place + 1);
        if (place != std::string_view::npos && format[place] == 'l') {
            demand.isLong = true;
            ++place;
        }
        if (place >= format.size()) return {false, false};
        if (format[place] == '%') continue;
        bool const fits = conversions.find(format[place]) != std::string_view::npos;
        if (!fits || ++count > 1) return {false, false};
    }
    return demand;
}

}  // namespace

TQString FormatDoubleText(double value, TQString format) {
    if (demandOf(format.text(), doubleConversions).isOneAtMost) format.Format(format, value);
    return format.Trim();
}

TQString FormatIntText(int value, TQString format) {
    Demand const demand = demandOf(format.text(), intConversions);
    if (demand.isOneAtMost && demand.isLong)
        format.Format(format, static_cast<long>(value));
    else if (demand.isOneAtMost)
        format.Format(format, value);
    return format.Trim();
}

TQString formatDouble(double value, TQString format) {
    if (format.text() != "SCIENTIFIC") return FormatDoubleText(value, std::move(format));
    format.DoubleFormat(value);
    return format;
}

}  // namespace tqlib::detail
