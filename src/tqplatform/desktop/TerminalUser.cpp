#include "tqplatform/desktop/TerminalUser.h"

#include <algorithm>
#include <iterator>

#include "tqplatform/desktop/Dialog.h"
#include "tqplatform/desktop/StaticControl.h"
#include "tqplatform/desktop/Terminal.h"
#include "tqplatform/desktop/TerminalKeys.h"
#include "tqplatform/desktop/TextScreen.h"
#include "tqplatform/desktop/TextView.h"

namespace tqplatform {
namespace {

constexpr int resizeWait = 200;  ///< milliseconds after which the terminal's size is looked at
constexpr int escapeWait = 50;   ///< milliseconds in which the rest of a key comes

struct Caption {
    int answer;
    char const *text;
};
constexpr Caption captions[] = {
    {IDOK, "OK"}, {IDCANCEL, "&Abbrechen"}, {IDYES, "&Ja"}, {IDNO, "&Nein"}};

// Measures of a message, in letters.
constexpr int widestText = 66;
constexpr std::size_t mostLines = 1000;
constexpr int buttonWidth = 15;
constexpr int margin = 2;
constexpr int rowsBesideText = 4;
constexpr int frame = 2;

DialogRect units(int row, int column, int rows, int columns) {
    auto const number = [](int value) { return static_cast<std::int16_t>(value); };
    return {number(column * 4), number(row * 8), number(columns * 4), number(rows * 8)};
}

int widthOf(std::vector<std::string> const &lines) {
    std::size_t width = 1;
    for (std::string const &line : lines)
        width = std::max(width, line.size());
    return static_cast<int>(width);
}

// In captions an & stands for itself only if it is doubled.
std::string asCaption(std::string_view text) {
    std::string caption;
    for (char const c : text) {
        caption += c;
        if (c == '&') caption += c;
    }
    return caption;
}

int widthOf(Answers const &answers) {
    auto const count = std::ranges::count_if(answers.button, [](int id) { return id != 0; });
    return static_cast<int>(count) * (buttonWidth + margin) - margin;
}

void addButtons(DialogTemplate &dialog, unsigned int style, int row, int column) {
    for (int const id : answersOf(style).button) {
        auto const *const caption = std::ranges::find(captions, id, &Caption::answer);
        if (caption == std::end(captions)) continue;
        unsigned int const kind = id == defaultAnswer(style) ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        dialog.controls.push_back({"BUTTON", caption->text, 0, static_cast<std::uint16_t>(id),
                                   units(row, column, 1, buttonWidth),
                                   WS_VISIBLE | WS_TABSTOP | kind});
        column += buttonWidth + margin;
    }
}

/// The dialog of a message: a line of text each, and a row of buttons below. In one that is higher
/// than the terminal the focus goes through the text as well, by half of what can be seen.
DialogTemplate dialogOf(Message const &message, Terminal::Size terminal) {
    int const widest = std::clamp(terminal.columns - frame - 2 * margin, 1, widestText);
    std::vector<std::string> lines = wrapText(message.text, widest);
    if (lines.size() > mostLines) lines.resize(mostLines);
    int const buttons = widthOf(answersOf(message.style));
    int const title = std::min(static_cast<int>(message.title.size()), widest);
    int const width = std::max({widthOf(lines), buttons, title});
    int const height = static_cast<int>(lines.size());
    bool const isTooHigh = height + rowsBesideText + frame > terminal.rows;
    int const step = std::max((terminal.rows - frame) / 2, 1);
    DialogTemplate dialog;
    dialog.title = message.title;
    dialog.style = WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_SYSMENU;
    dialog.place = units(0, 0, height + rowsBesideText, width + 2 * margin);
    int row = 1;
    for (std::string const &line : lines) {
        bool const isStop = isTooHigh && (row - 1) % step == 0;
        dialog.controls.push_back({"STATIC", asCaption(line), 0, 0,
                                   units(row++, margin, 1, std::max(widthOf({line}), 1)),
                                   WS_VISIBLE | (isStop ? WS_TABSTOP : 0)});
    }
    addButtons(dialog, message.style, row + 1, margin + (width - buttons) / 2);
    return dialog;
}

/// Ends the dialog of a message with the button that was pressed.
class MessageAnswer final : public MessageHandler {
  public:
    MessageAnswer(HWND dialog, unsigned int style) : dialog_(dialog), style_(style) {}

    LRESULT WindowProc(unsigned int message, WPARAM first, LPARAM second) override {
        // The default button has the focus, wherever it stands, unless the text has it first.
        if (message == WM_INITDIALOG) {
            auto const start = reinterpret_cast<HWND>(first);
            if (Window::findAs<StaticControl>(start) != nullptr) return 1;
            focusControl(GetDlgItem(dialog_, defaultAnswer(style_)));
            return 0;
        }
        auto const window = Window::find(dialog_);
        if (message != WM_COMMAND)
            return window == nullptr ? 0 : window->receive(message, first, second);
        int id = static_cast<int>(lowWord(first));
        Answers const answers = answersOf(style_);
        // With a single button Escape presses that.
        if (answers.button[1] == 0) id = answers.button[0];
        if (id != 0 && std::ranges::find(answers.button, id) != std::end(answers.button))
            EndDialog(dialog_, id);
        return 0;
    }
    int PreTranslateMessage(MSG * /*message*/) override { return 0; }
    void windowDestroyed() override {}

  private:
    HWND dialog_;
    unsigned int style_;
};

/// The window of a message, for as long as the object lives.
class MessageWindow {
  public:
    explicit MessageWindow(Message const &message)
        : dialog_(createDialog(dialogOf(message, Terminal::size()), nullptr)),
          handler_(dialog_, message.style) {
        Window::find(dialog_)->setHandler(&handler_);
    }
    MessageWindow(MessageWindow const &) = delete;
    MessageWindow &operator=(MessageWindow const &) = delete;
    ~MessageWindow() {
        if (auto const window = Window::find(dialog_)) window->setHandler(nullptr);
        DestroyWindow(dialog_);
    }

    int run() const { return runDialog(dialog_); }

  private:
    HWND dialog_;
    MessageAnswer handler_;
};

}  // namespace

bool TerminalUser::isThere() {
    return Terminal::isThere();
}

int TerminalUser::answer(Message const &message) {
    MessageWindow const window(message);
    int const answer = window.run();
    return isGone_ || answer < 0 ? defaultAnswer(message.style) : answer;
}

Input TerminalUser::next(HWND /*dialog*/) {
    Terminal::Size const drawn = Terminal::size();
    draw(drawn.rows, drawn.columns);
    while (true) {
        if (!bytes_.empty()) {
            TerminalKey key = readTerminalKey(bytes_, Terminal::isUtf8(), false);
            if (key.bytes == 0) {
                std::size_t const known = bytes_.size();
                isGone_ = !Terminal::read(bytes_, escapeWait);
                key = readTerminalKey(bytes_, Terminal::isUtf8(), bytes_.size() == known);
            }
            bytes_.erase(0, key.bytes);
            if (key.input) return *key.input;
            continue;
        }
        if (isGone_) return {Input::Kind::leave};
        isGone_ = !Terminal::read(bytes_, resizeWait);
        Terminal::Size const size = Terminal::size();
        if (size.rows != drawn.rows || size.columns != drawn.columns) return {Input::Kind::click};
    }
}

void TerminalUser::begin(HWND dialog) {
    dialogs_.push_back(dialog);
    Terminal::begin();
}

void TerminalUser::end(HWND /*dialog*/) {
    dialogs_.pop_back();
    Terminal::end();
}

void TerminalUser::beep(unsigned int /*kind*/) {
    Terminal::write("\a");
}

void TerminalUser::draw(int rows, int columns) const {
    TextScreen screen(rows, columns, Terminal::isUtf8());
    for (HWND const dialog : dialogs_)
        drawDialog(screen, dialog);
    Terminal::write(screen.bytes());
}

}  // namespace tqplatform
