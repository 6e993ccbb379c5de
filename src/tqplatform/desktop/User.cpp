#include "tqplatform/desktop/User.h"

#include <string>

#include "tqplatform/runtime/CodePage1252.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace tqplatform {
namespace {

constinit User *installed = nullptr;

constexpr int standardError = 2;

/// The buttons of a kind of message box, from left to right; 0 is none.
constexpr int buttons[][3] = {
    {IDOK, 0, 0},             // MB_OK
    {IDOK, IDCANCEL, 0},      // MB_OKCANCEL
    {0, 0, 0},                //
    {IDYES, IDNO, IDCANCEL},  // MB_YESNOCANCEL
    {IDYES, IDNO, 0},         // MB_YESNO
};
constexpr unsigned int kinds = sizeof buttons / sizeof buttons[0];

}  // namespace

int defaultAnswer(unsigned int style) {
    unsigned int const kind = style & 0xF;
    unsigned int const place = style >> 8 & 0xF;
    int const answer = kind < kinds && place < 3 ? buttons[kind][place] : 0;
    return answer == 0 ? IDOK : answer;
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

User &user() {
    static AbsentUser nobody;
    return installed == nullptr ? nobody : *installed;
}

User *installUser(User *user) {
    User *const before = installed;
    installed = user;
    return before;
}

}  // namespace tqplatform
