#pragma once

// A user who does what he was told before, and remembers what he saw: for tests.
//
//     ScriptedUser user;
//     user.answers(IDCANCEL).type("12").press(VK_TAB).then([&] { check(); }).press(VK_RETURN);
//     dialog.DoModal();
//     user.messages();     // the texts that were shown

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tqplatform/desktop/User.h"

namespace tqplatform {

/// In place from his construction to his destruction. When his script is at its end he leaves the
/// dialog, and answers messages with their default button.
class TQPLATFORM_API ScriptedUser : public User {
  public:
    ScriptedUser();
    ~ScriptedUser() override;

    /// Types characters, in Windows-1252; one with Alt.
    ScriptedUser &type(std::string_view text);
    ScriptedUser &typeAlt(char letter);

    /// Presses a key, a VK_ value, with Shift or with Alt.
    ScriptedUser &press(unsigned int key);
    ScriptedUser &pressShift(unsigned int key);
    ScriptedUser &pressAlt(unsigned int key);

    /// Clicks on the control of the dialog with an identifier; closes the dialog.
    ScriptedUser &click(int id);
    ScriptedUser &close();

    /// Does something between two inputs.
    ScriptedUser &then(std::function<void()> step);

    /// Answers the next message that has no answer yet.
    ScriptedUser &answers(int answer);

    /// The texts of the messages since the last call, each with a bar behind it.
    std::string messages();

    int answer(Message const &message) override;
    Input next(HWND dialog) override;
    void beep(unsigned int kind) override;
    void movePointer(POINT place) override;

    std::vector<std::string> titles;   ///< of all messages
    std::vector<unsigned int> styles;  ///< of all messages
    std::vector<unsigned int> beeps;
    std::vector<POINT> pointers;  ///< where the mouse pointer was put

  private:
    using Step = std::function<Input(HWND dialog)>;
    ScriptedUser &add(Input const &input);

    User *before_;
    std::deque<Step> steps_;
    std::deque<int> answers_;
    std::string texts_;
};

}  // namespace tqplatform
