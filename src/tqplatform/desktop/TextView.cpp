#include "tqplatform/desktop/TextView.h"

#include <algorithm>
#include <utility>

#include "tqplatform/desktop/Button.h"
#include "tqplatform/desktop/ComboBox.h"
#include "tqplatform/desktop/Dialog.h"
#include "tqplatform/desktop/EditControl.h"
#include "tqplatform/desktop/StaticControl.h"

namespace tqplatform {
namespace {

constexpr int shortestList = 3;  ///< rows of an open list

/// A place of a control in the dialog, in cells.
struct Cells {
    int row, column, rows, columns;

    int bottom() const { return row + rows; }
    int right() const { return column + columns; }
};

int cellsAcross(long pixels) {
    return static_cast<int>((pixels + letterWidth - 1) / letterWidth);
}

Cells cellsOf(Window const &window) {
    RECT const &rect = window.rect();
    auto const row = static_cast<int>(rect.top / letterHeight);
    auto const column = static_cast<int>(rect.left / letterWidth);
    int const rows = static_cast<int>((rect.bottom - rect.top) / letterHeight);
    return {row, column, std::max(rows, 1), std::max(cellsAcross(rect.right - rect.left), 1)};
}

// The lines of a caption, as wide as they are shown; each letter keeps its &.
std::vector<std::string> wrapCaption(std::string_view caption, int width) {
    std::vector<std::string> lines = wrapText(withoutMnemonic(caption), width);
    auto const next = [&] { return caption.substr(0, caption[0] == '&' ? 2 : 1); };
    for (std::string &line : lines) {
        std::size_t const shown = std::exchange(line, {}).size();
        for (std::size_t i = 0; i < shown; caption.remove_prefix(next().size()), ++i)
            line += next();
        // A blank or the end of a line between two.
        bool const isBreak = !caption.empty() && (next().back() == ' ' || next().back() == '\n');
        if (isBreak) caption.remove_prefix(next().size());
    }
    return lines;
}

/// A dialog on its screen.
class DialogView {
  public:
    DialogView(TextScreen &screen, Dialog const &dialog) : screen_(screen), dialog_(dialog) {
        arrange();
    }

    void draw();

  private:
    void arrange();
    template <class Draw>
    void forEachControl(Draw const &draw) const;
    Cells narrowed(Window const &window) const;
    CellPlace placeOf(Cells const &cells) const;

    void drawControl(HWND handle);
    void drawStatic(StaticControl const &control, Cells const &cells);
    void drawButton(Button const &button, Cells const &cells);
    void drawField(Window const &window, EditText const &line, Cells cells, bool hasCaret);
    void drawCombo(ComboBox const &combo, Cells const &cells);
    void drawList(ComboBox const &combo, Cells const &cells);

    TextScreen &screen_;
    Dialog const &dialog_;
    CellPlace corner_{0, 0};  ///< of the frame
    int rows_ = 0;            ///< inside of the frame
    int columns_ = 0;
    CellPlace shift_{0, 0};  ///< of the dialog, out of the frame
};

template <class Draw>
void DialogView::forEachControl(Draw const &draw) const {
    for (HWND const handle : dialog_.children())
        if (IsWindowVisible(handle) != 0) draw(handle);
}

// As large as the dialog says and its controls need, but not larger than the screen: then what has
// the focus is in sight.
void DialogView::arrange() {
    Cells const whole = cellsOf(dialog_);
    int const mostRows = std::max(screen_.rows() - 2, 1);
    int const mostColumns = std::max(screen_.columns() - 2, 1);
    rows_ = whole.rows;
    columns_ = whole.columns;
    Cells focus{};
    forEachControl([&](HWND handle) {
        Cells const cells = cellsOf(*Window::find(handle));
        int const rows = Window::findAs<ComboBox>(handle) ? 1 : cells.rows;
        rows_ = std::max(rows_, cells.row + (Window::findAs<Button>(handle) ? 1 : rows));
        columns_ = std::max(columns_, cells.right());
        if (handle == GetFocus()) focus = cells;
    });
    int const all = rows_;
    rows_ = std::clamp(rows_, 1, mostRows);
    columns_ = std::clamp(columns_, 1, mostColumns);
    shift_.row = std::clamp(focus.row - rows_ / 2, 0, std::max(all - rows_, 0));
    shift_.column = std::max(std::min(focus.right() - columns_, focus.column), 0);
    corner_ = {(screen_.rows() - rows_ - 2) / 2, (screen_.columns() - columns_ - 2) / 2};
}

void DialogView::draw() {
    screen_.frame(corner_, rows_ + 2, columns_ + 2);
    std::string const title(dialog_.text());
    screen_.clip({corner_.row, corner_.column + 1}, 1, columns_);
    if (!title.empty()) screen_.put({corner_.row, corner_.column + 2}, ' ' + title + ' ', boldCell);
    screen_.clip({corner_.row + 1, corner_.column + 1}, rows_, columns_);
    forEachControl([this](HWND handle) { drawControl(handle); });
    screen_.clipNothing();
    // Open lists lie above the other controls and the frame.
    forEachControl([this](HWND handle) {
        auto const combo = Window::findAs<ComboBox>(handle);
        if (combo && (combo->isOpen() || combo->isSimple())) drawList(*combo, narrowed(*combo));
    });
}

// The cells of a control, as wide as the frame at most.
Cells DialogView::narrowed(Window const &window) const {
    Cells cells = cellsOf(window);
    cells.columns = std::min(cells.columns, columns_);
    return cells;
}

CellPlace DialogView::placeOf(Cells const &cells) const {
    return {corner_.row + 1 + cells.row - shift_.row,
            corner_.column + 1 + cells.column - shift_.column};
}

void DialogView::drawControl(HWND handle) {
    auto const window = Window::find(handle);
    Cells const cells = narrowed(*window);
    bool const isSeen = cells.row >= shift_.row && cells.row < shift_.row + rows_;
    if (!isSeen) return;
    if (auto const *const text = dynamic_cast<StaticControl const *>(window.get()))
        drawStatic(*text, cells);
    else if (auto const *const button = dynamic_cast<Button const *>(window.get()))
        drawButton(*button, cells);
    else if (auto const *const edit = dynamic_cast<EditControl const *>(window.get()))
        drawField(*edit, edit->line(), cells, true);
    else if (auto const *const combo = dynamic_cast<ComboBox const *>(window.get()))
        drawCombo(*combo, cells);
}

void DialogView::drawStatic(StaticControl const &control, Cells const &cells) {
    CellPlace place = placeOf(cells);
    if (control.picture != nullptr) {
        screen_.put(place, "(i)", boldCell);
        return;
    }
    int row = 0;
    for (std::string const &line : wrapCaption(control.text(), cells.columns)) {
        if (row++ == cells.rows) break;
        screen_.putCaption(place, line);
        ++place.row;
    }
}

void DialogView::drawButton(Button const &button, Cells const &cells) {
    bool const isDefault = dialog_.defaultButton() == button.handle();
    bool const hasFocus = GetFocus() == button.handle();
    std::string const caption(button.text());
    auto const width = static_cast<int>(withoutMnemonic(caption).size());
    unsigned int const look =
        (hasFocus ? reversedCell : plainCell) | (button.has(WS_DISABLED) ? dimCell : plainCell);
    CellPlace place = placeOf(cells);
    auto const inside = static_cast<std::size_t>(std::max(cells.columns - 2, width));
    screen_.put(place, (isDefault ? '<' : '[') + std::string(inside, ' ') + (isDefault ? '>' : ']'),
                look);
    place.column += 1 + (static_cast<int>(inside) - width) / 2;
    screen_.putCaption(place, caption, look);
    if (hasFocus) screen_.setCursor(place);
}

// The part of a text around its caret, in brackets.
void DialogView::drawField(Window const &window, EditText const &line, Cells cells, bool hasCaret) {
    bool const hasFocus = GetFocus() == window.handle();
    auto const width = static_cast<std::size_t>(std::max(cells.columns - 2, 1));
    std::string_view const text = line.text();
    std::size_t const first = hasFocus && line.caret() >= width ? line.caret() - width + 1 : 0;
    std::string shown(text.substr(std::min(first, text.size()), width));
    shown.resize(width, ' ');
    CellPlace const place = placeOf(cells);
    unsigned int const look = window.has(WS_DISABLED) ? dimCell : plainCell;
    screen_.put(place, '[' + shown + ']', look);
    if (!hasFocus) return;
    for (std::size_t i = 0; i < width; ++i) {
        bool const isMarked = hasCaret ? first + i >= line.start() && first + i < line.end() : true;
        CellPlace const cell{place.row, place.column + 1 + static_cast<int>(i)};
        screen_.put(cell, {&shown[i], 1}, isMarked ? reversedCell : underlinedCell);
    }
    auto const caret = static_cast<int>(hasCaret ? line.caret() - first : 0);
    screen_.setCursor({place.row, place.column + 1 + caret});
}

void DialogView::drawCombo(ComboBox const &combo, Cells const &cells) {
    Cells field = cells;
    field.columns = std::max(cells.columns - 1, 3);
    drawField(combo, combo.field(), field, combo.hasEdit());
    CellPlace place = placeOf(field);
    place.column += field.columns;
    screen_.put(place, "v");
}

void DialogView::drawList(ComboBox const &combo, Cells const &cells) {
    int const count = static_cast<int>(combo.items().size());
    int const room = std::max(cells.rows - 1, shortestList);
    int const shown = std::min(room, std::max(count, 1));
    int const first = std::clamp(combo.selected() - shown / 2, 0, std::max(count - shown, 0));
    CellPlace const corner{placeOf(cells).row + 1, placeOf(cells).column};
    screen_.frame(corner, shown + 2, cells.columns);
    auto const width = static_cast<std::size_t>(std::max(cells.columns - 2, 1));
    for (int i = 0; i < shown && first + i < count; ++i) {
        int const index = first + i;
        std::string item = combo.items()[static_cast<std::size_t>(index)];
        item.resize(width, ' ');
        screen_.put({corner.row + 1 + i, corner.column + 1}, item,
                    index == combo.selected() ? reversedCell : plainCell);
    }
}

}  // namespace

void drawDialog(TextScreen &screen, HWND dialog) {
    if (auto const window = Window::findAs<Dialog>(dialog)) DialogView(screen, *window).draw();
}

std::vector<std::string> wrapText(std::string_view text, int width) {
    std::vector<std::string> lines;
    auto const most = static_cast<std::size_t>(std::max(width, 1));
    while (true) {
        std::size_t const end = std::min(text.find('\n'), text.size());
        std::size_t length = std::min(end, most);
        if (length < end) {
            std::size_t const blank = text.substr(0, length + 1).rfind(' ');
            if (blank != std::string_view::npos && blank > 0) length = blank;
        }
        lines.emplace_back(text.substr(0, length));
        if (length == text.size()) return lines;
        bool const isBreak = text[length] == ' ' || text[length] == '\n';
        text.remove_prefix(length + (isBreak ? 1 : 0));
    }
}

}  // namespace tqplatform
