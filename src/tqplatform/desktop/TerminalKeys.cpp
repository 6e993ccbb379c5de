#include "tqplatform/desktop/TerminalKeys.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "tqplatform/runtime/CodePage1252.h"

namespace tqplatform {
namespace {

constexpr char escape = '\x1B';
constexpr char erase = '\x7F';

/// Sequences "ESC [ number ~".
struct NumberedKey {
    unsigned int number;
    unsigned int key;
};
constexpr NumberedKey numberedKeys[] = {
    {1, VK_HOME}, {3, VK_DELETE}, {4, VK_END}, {5, VK_PRIOR},
    {6, VK_NEXT}, {7, VK_HOME},   {8, VK_END}, {14, VK_F4},
};

/// Sequences "ESC [ letter" and "ESC O letter".
struct LetteredKey {
    unsigned int key;
    char letter;
    bool shift;
};
constexpr LetteredKey letteredKeys[] = {
    {VK_UP, 'A', false},  {VK_DOWN, 'B', false}, {VK_RIGHT, 'C', false}, {VK_LEFT, 'D', false},
    {VK_END, 'F', false}, {VK_HOME, 'H', false}, {VK_F4, 'S', false},    {VK_TAB, 'Z', true},
};

/// Bytes that are keys.
struct ControlKey {
    char byte;
    unsigned int key;
};
constexpr ControlKey controlKeys[] = {
    {'\t', VK_TAB},  {'\r', VK_RETURN}, {'\n', VK_RETURN},
    {'\b', VK_BACK}, {erase, VK_BACK},  {' ', VK_SPACE},
};

Input pressed(unsigned int key, bool shift = false) {
    return {.kind = Input::Kind::key, .key = key, .shift = shift};
}

// The numbers of a sequence: the key, and 1 more than the sum of 1 for Shift and 2 for Alt.
std::optional<Input> sequenceKey(unsigned int number, unsigned int modifiers, char last) {
    std::optional<Input> input;
    auto const *const numbered = std::ranges::find(numberedKeys, number, &NumberedKey::number);
    auto const *const lettered = std::ranges::find(letteredKeys, last, &LetteredKey::letter);
    if (last == '~' && numbered != std::end(numberedKeys)) input = pressed(numbered->key);
    if (lettered != std::end(letteredKeys)) input = pressed(lettered->key, lettered->shift);
    if (!input || modifiers < 2) return input;
    input->shift = input->shift || ((modifiers - 1) & 1) != 0;
    input->alt = ((modifiers - 1) & 2) != 0;
    return input;
}

// "ESC [" or "ESC O", numbers with semicolons between them, and a last byte from @ to ~. An ESC
// cuts it off: the next key begins there.
TerminalKey readSequence(std::string_view bytes, bool isAll) {
    std::size_t place = 2;
    unsigned int numbers[2] = {0, 0};
    for (unsigned int &number : numbers) {
        char const *const end = bytes.data() + bytes.size();
        auto const read = std::from_chars(bytes.data() + place, end, number);
        place = static_cast<std::size_t>(read.ptr - bytes.data());
        if (place == bytes.size() || bytes[place] != ';') break;
        ++place;
    }
    auto const isLast = [](char c) { return (c >= '@' && c <= '~') || c == escape; };
    auto const last = std::ranges::find_if(bytes.substr(place), isLast);
    auto const length = static_cast<std::size_t>(last - bytes.begin());
    if (length == bytes.size()) return {isAll ? length : 0, std::nullopt};
    if (*last == escape) return {length, std::nullopt};
    return {length + 1, sequenceKey(numbers[0], numbers[1], *last)};
}

TerminalKey typed(std::size_t bytes, char c) {
    if (static_cast<unsigned char>(c) < VK_SPACE) return {bytes, std::nullopt};
    return {bytes, Input{.kind = Input::Kind::character, .character = c}};
}

TerminalKey readCharacter(std::string_view bytes, bool isUtf8, bool isAll) {
    auto const *const control = std::ranges::find(controlKeys, bytes[0], &ControlKey::byte);
    if (control != std::end(controlKeys)) return {1, pressed(control->key)};
    if (!isUtf8) return typed(1, bytes[0]);
    auto const [length, character] = readUtf8(bytes);
    if (length == 0) return {isAll ? bytes.size() : 0, std::nullopt};
    return typed(length, fromUnicode(character));
}

}  // namespace

TerminalKey readTerminalKey(std::string_view bytes, bool isUtf8, bool isAll) {
    if (bytes[0] != escape) return readCharacter(bytes, isUtf8, isAll);
    bool const isAlone = bytes.size() == 1;
    if (isAlone && !isAll) return {};
    if (isAlone || bytes[1] == escape) return {1, pressed(VK_ESCAPE)};
    bool const isBegun = bytes[1] == '[' || bytes[1] == 'O';
    bool const isWithAlt = bytes.size() > 2 ? bytes[2] == escape : isAll;
    if (isBegun && !isWithAlt) return readSequence(bytes, isAll);
    TerminalKey key = readCharacter(bytes.substr(1), isUtf8, isAll);
    if (key.bytes == 0) return {};
    ++key.bytes;
    if (key.input) key.input->alt = true;
    return key;
}

}  // namespace tqplatform
