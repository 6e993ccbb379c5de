#pragma once

// The person in front of the desktop, as the platform sees him: asked for answers, whether anyone
// is there or not.

#include <string_view>

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
};

/// Nobody: messages go to standard error and are answered with their default button.
class TQPLATFORM_API AbsentUser : public User {
  public:
    int answer(Message const &message) override;
};

/// The user of this process: nobody, until a host or a test installs another one.
TQPLATFORM_API User &user();

/// Makes `user`, which stays the caller's and outlives its use, the user of this process; null is
/// nobody. The result is the one before, or null.
TQPLATFORM_API User *installUser(User *user);

}  // namespace tqplatform
