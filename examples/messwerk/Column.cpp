#include "Column.h"

#include "Errors.h"
#include "Words.h"

namespace messwerk {
namespace {

constexpr std::string_view omitted = "-";

ColumnKind columnKind(std::string_view name) {
    struct {
        std::string_view name;
        ColumnKind kind;
    } constexpr kinds[] = {
        {"number", ColumnKind::Number},
        {"text", ColumnKind::Text},
    };
    for (auto const &entry : kinds)
        if (entry.name == name) return entry.kind;
    throw UsageError("a column is \"number\" or \"text\", not " + quoted(name));
}

}  // namespace

Column parseColumn(std::string_view description) {
    if (description == omitted) return {"", ColumnKind::Omitted};
    std::size_t const colon = description.find(':');
    std::string const name(description.substr(0, colon));
    if (colon == std::string_view::npos) return {name, ColumnKind::Number};
    return {name, columnKind(description.substr(colon + 1))};
}

}  // namespace messwerk
