#pragma once

#include <string>
#include <type_traits>
#include <vector>

#include "tqlib/foundation/TQString.h"

/// A block for texts, as an application has one.
struct TextBlock {
    std::vector<char> bytes = std::vector<char>(9192);
};

inline std::string shownField(CString const &field) {
    return static_cast<char const *>(field);
}
inline std::string shownField(TextBlock const &field) {
    return field.bytes.data();
}
template <typename Number>
requires std::is_arithmetic_v<Number> std::string shownField(Number field) {
    return std::to_string(field);
}

template <typename Reader, typename Number>
void takeField(Reader &file, Number &field) {
    file >> &field;
}
template <typename Reader>
void takeField(Reader &file, TQString &field) {
    file >> field;
}
template <typename Reader>
void takeField(Reader &file, CString &field) {
    file >> field;
}
template <typename Reader>
void takeField(Reader &file, TextBlock &field) {
    file >> field.bytes.data();
}

/// The next fields of the line that `file` stands in, at most `most` of them; "!" stands for a
/// failure, after two of which the reading ends.
template <typename Field, typename Reader>
std::string fieldsOf(Reader file, int most = 100) {
    std::string result;
    for (int failures = 0; failures < 2 && most > 0; --most) {
        Field field{};
        try {
            takeField(file, field);
            result += "[" + shownField(field) + "]";
        } catch (typename Reader::Failure const &) {
            result += "!";
            ++failures;
        }
    }
    return result;
}
