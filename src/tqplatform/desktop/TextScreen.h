#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// How a cell of a screen looks: a sum of these.
enum CellLook : unsigned char {
    plainCell = 0,
    boldCell = 1,
    dimCell = 2,
    underlinedCell = 4,
    reversedCell = 8
};

/// A place on a screen, counted from 0 at the upper left; it may lie outside.
struct CellPlace {
    int row, column;
};

/// A screen of characters. What is put outside of it is left out.
class TQPLATFORM_API TextScreen {
  public:
    /// An empty screen; `isUtf8` tells what the terminal understands.
    TextScreen(int rows, int columns, bool isUtf8);

    int rows() const { return rows_; }
    int columns() const { return columns_; }

    /// Puts a text in Windows-1252 on a row.
    void put(CellPlace place, std::string_view text, unsigned int look = plainCell);

    /// The same with a caption: the letter behind an & is underlined.
    void putCaption(CellPlace place, std::string_view caption, unsigned int look = plainCell);

    /// Makes a rectangle empty, with a frame around it inside its outer cells.
    void frame(CellPlace place, int rows, int columns);

    /// Limits what is put from now on to a rectangle.
    void clip(CellPlace place, int rows, int columns) {
        clipFirst_ = place;
        clipLast_ = {place.row + rows - 1, place.column + columns - 1};
    }
    void clipNothing() { clip({0, 0}, rows_, columns_); }

    /// Where the cursor blinks; without that there is none.
    void setCursor(CellPlace place) { cursor_ = place; }

    /// The bytes that make a terminal show the screen.
    std::string bytes() const;

    /// A row as text for the terminal, without its looks and the blanks at its end.
    std::string row(int number) const;

  private:
    struct Cell {
        char16_t character = ' ';
        unsigned int look = plainCell;
    };

    void set(CellPlace place, char16_t character, unsigned int look);
    void append(std::string &bytes, char16_t character) const;
    std::size_t indexOf(int row, int column) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
               static_cast<std::size_t>(column);
    }

    int rows_;
    int columns_;
    bool isUtf8_;
    CellPlace clipFirst_{0, 0};
    CellPlace clipLast_;
    CellPlace cursor_{-1, -1};
    std::vector<Cell> cells_;
};

}  // namespace tqplatform
