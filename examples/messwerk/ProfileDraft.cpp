#include "ProfileDraft.h"

#include <algorithm>

#include "tqplatform/runtime/CodePage1252.h"
#include "Words.h"

namespace messwerk {
namespace {

constexpr char limitCategory[] = "Limits";
constexpr char formulaCategory[] = "Calculations";

TQString trimmed(std::string_view text) {
    TQString result(std::string(text).c_str());
    return result.Trim();
}

TQString shownPath(Profile &profile, char const *category) {
    return tqplatform::fromUtf8(profile.value(category, "File").value_or("")).c_str();
}

std::vector<LimitText> limitsOf(Profile &profile, Options const &options) {
    std::vector<LimitText> limits;
    for (Column const &column : resultColumns(options))
        if (column.kind == ColumnKind::Number) limits.push_back({column.name, "", ""});
    for (Entry const &entry : profile.entries(limitCategory)) {
        std::string const column = toCapitals(trimmed(entry.name).text());
        auto const colon = std::min(entry.value.find(':'), entry.value.size());
        for (LimitText &limit : limits) {
            if (toCapitals(limit.column) != column) continue;
            limit.lowest = trimmed(entry.value.substr(0, colon));
            limit.highest = trimmed(std::string_view(entry.value)
                                        .substr(colon)
                                        .substr(colon < entry.value.size() ? 1 : 0));
        }
    }
    return limits;
}

std::vector<Formula> formulasOf(Profile &profile) {
    std::vector<Formula> formulas;
    for (Entry const &entry : profile.entries(formulaCategory))
        formulas.push_back({std::string(trimmed(entry.name)), std::string(trimmed(entry.value))});
    return formulas;
}

bool sameFormulas(std::vector<Formula> const &left, std::vector<Formula> const &right) {
    return std::ranges::equal(left, right, [](Formula const &one, Formula const &other) {
        return one.name == other.name && one.text == other.text;
    });
}

// A new value goes to the head of its category, so the last one comes first.
void writeFormulas(Profile &profile, std::vector<Formula> const &formulas) {
    for (Entry const &entry : profile.entries(formulaCategory))
        profile.set(formulaCategory, entry.name, "");
    for (auto formula = formulas.rbegin(); formula != formulas.rend(); ++formula)
        profile.set(formulaCategory, formula->name, formula->text);
}

void writeLimit(Profile &profile, LimitText const &limit) {
    for (Entry const &entry : profile.entries(limitCategory))
        if (toCapitals(trimmed(entry.name).text()) == toCapitals(limit.column))
            profile.set(limitCategory, entry.name, "");
    if (limit.lowest.IsEmpty() && limit.highest.IsEmpty()) return;
    profile.set(limitCategory, limit.column,
                std::string(limit.lowest) + ':' + std::string(limit.highest));
}

}  // namespace

ProfileDraft ProfileDraft::of(Profile &profile, Options const &options) {
    ProfileDraft draft;
    draft.input = shownPath(profile, "Input");
    draft.output = shownPath(profile, "Output");
    draft.headerLines = static_cast<int>(options.headerLines);
    draft.limits = limitsOf(profile, options);
    draft.formulas = formulasOf(profile);
    return draft;
}

void ProfileDraft::write(Profile &profile, ProfileDraft const &before) const {
    if (input != before.input) profile.set("Input", "File", tqplatform::toUtf8(input.text()));
    if (output != before.output) profile.set("Output", "File", tqplatform::toUtf8(output.text()));
    if (headerLines != before.headerLines)
        profile.set("Input", "HeaderLines", std::to_string(headerLines));
    if (!sameFormulas(formulas, before.formulas)) writeFormulas(profile, formulas);
    for (std::size_t i = 0; i < limits.size(); ++i)
        if (limits[i].lowest != before.limits[i].lowest ||
            limits[i].highest != before.limits[i].highest)
            writeLimit(profile, limits[i]);
}

}  // namespace messwerk
