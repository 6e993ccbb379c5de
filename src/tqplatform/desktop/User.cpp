#include "tqplatform/desktop/User.h"

#include <iterator>
#include <string>

#include "tqplatform/desktop/TerminalUser.h"
#include "tqplatform/runtime/CodePage1252.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace tqplatform {
namespace {

constinit User *installed = nullptr;

constexpr int standardError = 2;

/// The buttons of each kind of message box.
constexpr Answers kinds[] = {
    {{IDOK, 0, 0}},             // MB_OK
    {{IDOK, IDCANCEL, 0}},      // MB_OKCANCEL
    {{IDOK, 0, 0}},             //
    {{IDYES, IDNO, IDCANCEL}},  // MB_YESNOCANCEL
    {{IDYES, IDNO, 0}},         // MB_YESNO
};

}  // namespace

Answers answersOf(unsigned int style) {
    unsigned int const kind = style & 0xF;
    return kinds[kind < std::size(kinds) ? kind : MB_OK];
}

int defaultAnswer(unsigned int style) {
    Answers const answers = answersOf(style);
    unsigned int const place = style >> 8 & 0xF;
    int const answer = place < std::size(answers.button) ? answers.button[place] : 0;
    return answer == 0 ? answers.button[0] : answer;
}

User::~User() = default;

int AbsentUser::answer(Message const &message) {
    std::string line(message.title);
    if (!line.empty()) line += ": ";
    line += message.text;
    line = toUtf8(line) + '\n';
    writeFile(standardError, line.data(), line.size());
    return defaultAnswer(message.style);
}

Input AbsentUser::next(HWND /*dialog*/) {
    return {Input::Kind::leave};
}

User &user() {
    if (installed != nullptr) return *installed;
    // Never destroyed: static objects of the host may have something to say in their destructors.
    static User *const nobody = new AbsentUser;
    static User *const atTerminal = new TerminalUser;
    return TerminalUser::isThere() ? *atTerminal : *nobody;
}

User *installUser(User *user) {
    User *const before = installed;
    installed = user;
    return before;
}

}  // namespace tqplatform

int MessageBoxA(HWND /*owner*/, char const *text, char const *title, unsigned int style) {
    auto const orEmpty = [](char const *some) { return some == nullptr ? "" : some; };
    return tqplatform::user().answer({orEmpty(text), orEmpty(title), style});
}

int MessageBeep(unsigned int kind) {
    tqplatform::user().beep(kind);
    return 1;
}

int SetCursorPos(int x, int y) {
    tqplatform::user().movePointer({x, y});
    return 1;
}
