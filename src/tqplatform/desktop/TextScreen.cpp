#include "tqplatform/desktop/TextScreen.h"

#include <algorithm>
#include <iterator>

#include "tqplatform/runtime/CodePage1252.h"

namespace tqplatform {
namespace {

// Frames, by lines and corners, and what stands for them where there are no such characters.
struct Line {
    char16_t character;
    char plain;
};
constexpr Line lines[] = {
    {0x2500, '-'}, {0x2502, '|'}, {0x250C, '+'}, {0x2510, '+'}, {0x2514, '+'}, {0x2518, '+'},
};
enum LineName { across, down, upperLeft, upperRight, lowerLeft, lowerRight };

struct LookCode {
    unsigned int look;
    std::string_view code;
};
constexpr LookCode lookCodes[] = {
    {boldCell, ";1"}, {dimCell, ";2"}, {underlinedCell, ";4"}, {reversedCell, ";7"}};

std::string codeOf(unsigned int look) {
    std::string code = "\x1B[0";
    for (auto const &[one, number] : lookCodes)
        if ((look & one) != 0) code += number;
    return code += 'm';
}

constexpr char16_t firstShown = ' ';
constexpr char16_t unshown = 0x7F;

bool isShown(char16_t character) {
    return character >= firstShown && (character < unshown || character > 0x9F);
}

}  // namespace

TextScreen::TextScreen(int rows, int columns, bool isUtf8)
    : rows_(std::max(rows, 1)),
      columns_(std::max(columns, 1)),
      isUtf8_(isUtf8),
      clipLast_{rows_ - 1, columns_ - 1},
      cells_(static_cast<std::size_t>(rows_) * static_cast<std::size_t>(columns_)) {}

void TextScreen::set(CellPlace place, char16_t character, unsigned int look) {
    bool const isOnScreen =
        place.row >= 0 && place.row < rows_ && place.column >= 0 && place.column < columns_;
    bool const isInClip = place.row >= clipFirst_.row && place.row <= clipLast_.row &&
                          place.column >= clipFirst_.column && place.column <= clipLast_.column;
    if (!isOnScreen || !isInClip) return;
    cells_[indexOf(place.row, place.column)] = {isShown(character) ? character : u' ', look};
}

void TextScreen::put(CellPlace place, std::string_view text, unsigned int look) {
    for (char const c : text) {
        set(place, toUnicode(c), look);
        ++place.column;
    }
}

void TextScreen::putCaption(CellPlace place, std::string_view caption, unsigned int look) {
    for (std::size_t i = 0; i < caption.size(); ++i) {
        bool const isMarked = caption[i] == '&' && i + 1 < caption.size();
        if (isMarked) ++i;
        bool const isMnemonic = isMarked && caption[i] != '&';
        set(place, toUnicode(caption[i]), isMnemonic ? look | underlinedCell : look);
        ++place.column;
    }
}

void TextScreen::frame(CellPlace place, int rows, int columns) {
    int const bottom = place.row + rows - 1;
    int const right = place.column + columns - 1;
    for (int row = place.row; row <= bottom; ++row) {
        bool const isEnd = row == place.row || row == bottom;
        for (int column = place.column; column <= right; ++column) {
            bool const isSide = column == place.column || column == right;
            char16_t const side = isSide ? lines[down].character : u' ';
            set({row, column}, isEnd ? lines[across].character : side, plainCell);
        }
    }
    set(place, lines[upperLeft].character, plainCell);
    set({place.row, right}, lines[upperRight].character, plainCell);
    set({bottom, place.column}, lines[lowerLeft].character, plainCell);
    set({bottom, right}, lines[lowerRight].character, plainCell);
}

void TextScreen::append(std::string &bytes, char16_t character) const {
    if (character < unshown) {
        bytes += static_cast<char>(character);
    } else if (isUtf8_) {
        appendUtf8(bytes, character);
    } else {
        auto const *const line = std::ranges::find(lines, character, &Line::character);
        bytes += line == std::end(lines) ? '?' : line->plain;
    }
}

std::string TextScreen::bytes() const {
    std::string result = "\x1B[?25l\x1B[H";
    unsigned int look = plainCell;
    result += codeOf(look);
    for (int row = 0; row < rows_; ++row) {
        result += "\x1B[" + std::to_string(row + 1) + ";1H";
        for (int column = 0; column < columns_; ++column) {
            Cell const &cell = cells_[indexOf(row, column)];
            if (cell.look != look) result += codeOf(cell.look);
            look = cell.look;
            append(result, cell.character);
        }
    }
    if (cursor_.row >= 0 && cursor_.column >= 0) {
        result += "\x1B[" + std::to_string(cursor_.row + 1) + ';';
        result += std::to_string(cursor_.column + 1) + "H\x1B[?25h";
    }
    return result;
}

std::string TextScreen::row(int number) const {
    std::string result;
    if (number < 0 || number >= rows_) return result;
    for (int column = 0; column < columns_; ++column)
        append(result, cells_[indexOf(number, column)].character);
    result.erase(result.find_last_not_of(' ') + 1);
    return result;
}

}  // namespace tqplatform
