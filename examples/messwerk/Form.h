#pragma once

// The forms that the file of the input and that of the result can have.

#include <string>
#include <vector>

#include "Column.h"

namespace messwerk {

enum class Form {
    Separated,  ///< a separator behind each field, texts in quotes
    Text,       ///< blanks between the fields, which hold neither blanks nor quotes
    Columns,    ///< each field has its width, as a layout tells
};

/// A field of fixed width, as a Fortran format describes it.
struct Field {
    char kind;         ///< A text, I whole number, F number with decimals
    unsigned int gap;  ///< blanks ahead of it
    unsigned int width;
    unsigned int decimals;  ///< of F
};

/// The fields of a line from left to right.
using Layout = std::vector<Field>;

/// The form named "separated", "text" or "columns". Throws UsageError for another word.
Form parseForm(std::string const &name);

/// The layout that a list such as "A6 X2 I5 F10.3" means. Throws UsageError.
Layout parseLayout(std::string const &list);

/// Throws UsageError if `layout` hasn't a field for each of `columns`, of a kind that holds what
/// the column holds. An omitted column may have any kind.
void checkLayout(Layout const &layout, std::vector<Column> const &columns);

/// "F10.3", for a message.
std::string describe(Field const &field);

}  // namespace messwerk
