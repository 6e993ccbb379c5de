#include "ProfileDraft.h"

#include <algorithm>

#include "Words.h"

namespace messwerk {
namespace {

constexpr char limitCategory[] = "Limits";
constexpr char formulaCategory[] = "Calculations";

TQString trimmed(std::string_view text) {
    TQString result(std::string(text).c_str());
    return result.Trim();
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

// Takes away the lines of `category` that `goes` picks.
template <typename Predicate>
void removeLines(Profile &profile, char const *category, Predicate goes) {
    for (Entry const &entry : profile.entries(category))
        if (goes(entry)) profile.set(category, entry.name, "");
}

// A value that is set goes to the head of its category, so the last one comes first. Lines are
// taken away last: a disk that is full loses none.
void writeFormulas(Profile &profile, std::vector<Formula> const &formulas) {
    for (auto formula = formulas.rbegin(); formula != formulas.rend(); ++formula)
        profile.set(formulaCategory, formula->name, formula->text);
    removeLines(profile, formulaCategory, [&](Entry const &entry) {
        return std::ranges::find(formulas, entry.name, &Formula::name) == formulas.end();
    });
}

void writeLimit(Profile &profile, LimitText const &limit) {
    bool const isLimited = !limit.lowest.IsEmpty() || !limit.highest.IsEmpty();
    if (isLimited)
        profile.set(limitCategory, limit.column,
                    std::string(limit.lowest) + ':' + std::string(limit.highest));
    removeLines(profile, limitCategory, [&](Entry const &entry) {
        return toCapitals(trimmed(entry.name).text()) == toCapitals(limit.column) &&
               !(isLimited && entry.name == limit.column);
    });
}

}  // namespace

ProfileDraft ProfileDraft::of(Profile &profile, Options const &options) {
    ProfileDraft draft;
    draft.input = profile.value("Input", "File").value_or("");
    draft.output = profile.value("Output", "File").value_or("");
    draft.headerLines = static_cast<int>(options.headerLines);
    draft.limits = limitsOf(profile, options);
    draft.formulas = formulasOf(profile);
    return draft;
}

void ProfileDraft::write(Profile &profile, ProfileDraft const &before) const {
    if (input != before.input) profile.set("Input", "File", input);
    if (output != before.output) profile.set("Output", "File", output);
    if (headerLines != before.headerLines)
        profile.set("Input", "HeaderLines", std::to_string(headerLines));
    if (!sameFormulas(formulas, before.formulas)) writeFormulas(profile, formulas);
    for (std::size_t i = 0; i < limits.size(); ++i)
        if (limits[i].lowest != before.limits[i].lowest ||
            limits[i].highest != before.limits[i].highest)
            writeLimit(profile, limits[i]);
}

}  // namespace messwerk
