#pragma once

// The person in front of the desktop, as the platform sees him: asked for answers and for the next
// thing that he does in a dialog, whether anyone is there or not.

#include <string_view>

#include "tqplatform/desktop/Window.h"
#include "tqplatform/graphics/Geometry.h"
#include "tqplatform/runtime/Export.h"

/// Kinds, pictures and other properties of message boxes, to be joined.
inline constexpr unsigned int MB_OK = 0x0;
inline constexpr unsigned int MB_OKCANCEL = 0x1;
inline constexpr unsigned int MB_YESNOCANCEL = 0x3;
inline constexpr unsigned int MB_YESNO = 0x4;
inline constexpr unsigned int MB_ICONHAND = 0x10;
inline constexpr unsigned int MB_ICONQUESTION = 0x20;
inline constexpr unsigned int MB_ICONEXCLAMATION = 0x30;
inline constexpr unsigned int MB_ICONINFORMATION = 0x40;
inline constexpr unsigned int MB_DEFBUTTON2 = 0x100;
inline constexpr unsigned int MB_DEFBUTTON3 = 0x200;
inline constexpr unsigned int MB_SYSTEMMODAL = 0x1000;

/// Answers to message boxes and dialogs.
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

namespace tqplatform {

/// A message to the user. Texts are in Windows-1252; the title may be empty.
struct Message {
    std::string_view text;
    std::string_view title;
    unsigned int style;  ///< a sum of MB_ values
};

/// One thing that the user does.
struct Input {
    enum class Kind {
        key,        ///< presses `key`, a VK_ value
        character,  ///< types `character`, in Windows-1252
        click,      ///< clicks on `window`
        close,      ///< closes the dialog by its system menu
        leave       ///< is gone: the dialog ends as by Escape, even one that doesn't want to
    };
    Kind kind;
    unsigned int key = 0;
    char character = '\0';
    HWND window = nullptr;
    bool alt = false;
    bool shift = false;
};

/// The answers that the buttons of a message box give, from left to right; 0 is no button.
struct Answers {
    int button[3];
};

/// The buttons of a message box with that style: OK alone for kinds that there are none of.
TQPLATFORM_API Answers answersOf(unsigned int style);

/// The answer of the default button of a message box with that style.
TQPLATFORM_API int defaultAnswer(unsigned int style);

/// Who sits in front of the desktop.
class TQPLATFORM_API User {
  public:
    User() = default;
    User(User const &) = delete;
    User &operator=(User const &) = delete;
    virtual ~User();

    /// Shows a message and gives the answer, the identifier of one of its buttons.
    virtual int answer(Message const &message) = 0;

    /// The next thing that the user does in `dialog`, the innermost one that has begun.
    virtual Input next(HWND dialog) = 0;

    /// A dialog's loop begins, and ends: in any case, also when an exception leaves it.
    virtual void begin(HWND /*dialog*/) {}
    virtual void end(HWND /*dialog*/) {}

    /// A sound, of a kind as for MessageBeep(); the mouse pointer is put to a place in pixels.
    virtual void beep(unsigned int /*kind*/) {}
    virtual void movePointer(POINT /*place*/) {}
};

/// Nobody: messages go to standard error and are answered with their default button, dialogs are
/// left.
class TQPLATFORM_API AbsentUser : public User {
  public:
    int answer(Message const &message) override;
    Input next(HWND dialog) override;
};

/// The user of this process: the one that is installed, else one at the terminal where standard
/// input and error are one, else nobody.
TQPLATFORM_API User &user();

/// Makes `user`, which stays the caller's and outlives its use, the user of this process; null is
/// the one of the beginning. The result is the one that was installed before, or null.
TQPLATFORM_API User *installUser(User *user);

}  // namespace tqplatform

/// Shows a message box over `owner`, null for none, and gives the identifier of the button that was
/// pressed. A null text or title is an empty one.
TQPLATFORM_API int MessageBoxA(HWND owner, char const *text, char const *title, unsigned int style);

/// Lets the user hear a sound; `kind` is a picture of message boxes, or -1 for a plain one. 1.
TQPLATFORM_API int MessageBeep(unsigned int kind);

/// Puts the mouse pointer to a place of the desktop, in pixels. 1.
TQPLATFORM_API int SetCursorPos(int x, int y);
