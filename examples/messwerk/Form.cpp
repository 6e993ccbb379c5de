#include "Form.h"

#include <charconv>
#include <utility>

#include "Errors.h"
#include "Words.h"

namespace messwerk {
namespace {

constexpr unsigned int widest = 9000;

constexpr char const *formNames[] = {"separated", "text", "columns"};  // as the forms are numbered

// Takes the number at the start of `text`.
bool takeNumber(std::string_view &text, unsigned int &number) {
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

// The field or gap that `word` describes; of a gap the width is 0.
Field parseField(std::string const &word) {
    std::string_view rest = word;
    Field field{toCapitals(rest.substr(0, 1)).front(), 0, 0, 0};
    rest.remove_prefix(1);
    bool const isReal = field.kind == 'F';
    bool fits = std::string_view("AIFX").find(field.kind) != std::string_view::npos &&
                takeNumber(rest, field.width);
    if (isReal && rest.starts_with('.')) {
        rest.remove_prefix(1);
        fits = fits && takeNumber(rest, field.decimals) && field.decimals < field.width;
    }
    if (!fits || !rest.empty() || field.width == 0 || field.width > widest)
        throw UsageError(
            "a field is A, I or F with a width, such as A6, I5 or F10.3, or X with a "
            "number of blanks, not " +
            quoted(word));
    if (field.kind == 'X') field = {'X', field.width, 0, 0};
    return field;
}

bool holds(Field const &field, ColumnKind kind) {
    if (kind == ColumnKind::Omitted) return true;
    return (kind == ColumnKind::Number) == (field.kind != 'A');
}

}  // namespace

Form parseForm(std::string const &name) {
    for (int index = 0; index < 3; ++index)
        if (name == formNames[index]) return static_cast<Form>(index);
    throw UsageError("a form is separated, text or columns, not " + quoted(name));
}

Layout parseLayout(std::string const &list) {
    Layout layout;
    unsigned int gap = 0;
    TQString const words = list.c_str();
    TQString word;
    for (int at = 0; at != -1;) {
        at = words.GetToken(word, at, " ,\t", 1);
        if (word.IsEmpty()) continue;
        Field field = parseField(std::string(word.text()));
        if (field.kind == 'X') {
            gap += field.gap;
            continue;
        }
        field.gap = std::exchange(gap, 0);
        layout.push_back(field);
    }
    return layout;
}

void checkLayout(Layout const &layout, std::vector<Column> const &columns) {
    if (layout.size() != columns.size())
        throw UsageError("the layout has " + counted(static_cast<long>(layout.size()), "field") +
                         " for " + counted(static_cast<long>(columns.size()), "column"));
    for (std::size_t index = 0; index < layout.size(); ++index)
        if (!holds(layout[index], columns[index].kind))
            throw UsageError("the field " + describe(layout[index]) + " can't hold the column " +
                             quoted(columns[index].name) + ": numbers take I or F, the others A");
}

std::string describe(Field const &field) {
    std::string text = field.kind + std::to_string(field.width);
    if (field.kind == 'F') text += '.' + std::to_string(field.decimals);
    return text;
}

}  // namespace messwerk
