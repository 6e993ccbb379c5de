#include "Column.h"

#include "Errors.h"
#include "Words.h"

namespace messwerk {
namespace {

constexpr std::string_view omitted = "-";

Column columnOf(std::string const &name, std::string_view kind) {
    if (kind == "number") return {name, ColumnKind::Number};
    if (kind == "text") return {name, ColumnKind::Text};
    MomentForm const *const form = findMomentForm(kind);
    if (form != nullptr) return {name, form->kind, form};
    throw UsageError("a column is number, text, " + momentFormNames() + ", not " + quoted(kind));
}

}  // namespace

Column parseColumn(std::string_view description) {
    if (description == omitted) return {"", ColumnKind::Omitted};
    std::size_t const colon = description.find(':');
    std::string const name(description.substr(0, colon));
    if (colon == std::string_view::npos) return {name, ColumnKind::Number};
    return columnOf(name, description.substr(colon + 1));
}

}  // namespace messwerk
