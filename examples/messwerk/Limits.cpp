#include "Limits.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "Errors.h"
#include "Words.h"

namespace messwerk {
namespace {

constexpr char form[] = "a limit has the form NAME = LOWEST:HIGHEST, not ";
constexpr double infinity = std::numeric_limits<double>::infinity();

std::optional<double> parseBound(std::string const &text, std::string const &limit) {
    if (TQString(text.c_str()).Trim().IsEmpty()) return std::nullopt;
    auto const number = wholeNumber(text.c_str());
    if (!number || std::isnan(*number)) throw UsageError(form + quoted(limit));
    return number;
}

std::string shown(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", number);
    return text;
}

}  // namespace

Limit parseLimit(std::string const &text) {
    std::size_t const equals = text.find('=');
    std::size_t const colon = text.find(':', std::min(equals, text.size()));
    if (colon == std::string::npos) throw UsageError(form + quoted(text));
    TQString name = text.substr(0, equals).c_str();
    Limit limit{toCapitals(name.Trim().text()),
                parseBound(text.substr(equals + 1, colon - equals - 1), text),
                parseBound(text.substr(colon + 1), text)};
    if (!limit.lowest && !limit.highest) throw UsageError(form + quoted(text));
    return limit;
}

void checkLimit(Limit const &limit, Names const &names) {
    auto const kind = names.kindOf(limit.column);
    if (!kind) throw UsageError("there is no column " + quoted(limit.column) + " to be limited");
    if (*kind != ColumnKind::Number)
        throw UsageError("only numbers can be limited, not " + quoted(limit.column));
}

Limits::Limits(std::vector<Limit> const &limits, std::vector<Column> const &columns) {
    for (Limit const &limit : limits)
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (toCapitals(columns[i].name) == limit.column)
                checks_.push_back({i, columns[i].name, limit.lowest.value_or(-infinity),
                                   limit.highest.value_or(infinity)});
}

std::optional<std::string> Limits::check(Row const &row) const {
    for (auto const &[column, name, lowest, highest] : checks_) {
        double const number = row[column].number;
        if (number < lowest) return name + " is " + shown(number) + ", below " + shown(lowest);
        if (number > highest) return name + " is " + shown(number) + ", above " + shown(highest);
    }
    return std::nullopt;
}

}  // namespace messwerk
