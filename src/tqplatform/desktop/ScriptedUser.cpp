#include "tqplatform/desktop/ScriptedUser.h"

#include <utility>

namespace tqplatform {

ScriptedUser::ScriptedUser() : before_(installUser(this)) {}

ScriptedUser::~ScriptedUser() {
    installUser(before_);
}

ScriptedUser &ScriptedUser::add(Input const &input) {
    steps_.emplace_back([=](HWND) { return input; });
    return *this;
}

ScriptedUser &ScriptedUser::type(std::string_view text) {
    for (char const c : text)
        add({.kind = Input::Kind::character, .character = c});
    return *this;
}

ScriptedUser &ScriptedUser::typeAlt(char letter) {
    return add({.kind = Input::Kind::character, .character = letter, .alt = true});
}

ScriptedUser &ScriptedUser::press(unsigned int key) {
    return add({.kind = Input::Kind::key, .key = key});
}

ScriptedUser &ScriptedUser::pressShift(unsigned int key) {
    return add({.kind = Input::Kind::key, .key = key, .shift = true});
}

ScriptedUser &ScriptedUser::pressAlt(unsigned int key) {
    return add({.kind = Input::Kind::key, .key = key, .alt = true});
}

ScriptedUser &ScriptedUser::click(int id) {
    steps_.emplace_back([=](HWND dialog) {
        return Input{.kind = Input::Kind::click, .window = GetDlgItem(dialog, id)};
    });
    return *this;
}

ScriptedUser &ScriptedUser::close() {
    return add({.kind = Input::Kind::close});
}

ScriptedUser &ScriptedUser::then(std::function<void()> step) {
    steps_.emplace_back([step = std::move(step)](HWND) {
        step();
        return Input{.kind = Input::Kind::click};  // on nothing
    });
    return *this;
}

ScriptedUser &ScriptedUser::answers(int answer) {
    answers_.push_back(answer);
    return *this;
}

std::string ScriptedUser::messages() {
    return std::exchange(texts_, {});
}

int ScriptedUser::answer(Message const &message) {
    (texts_ += message.text) += '|';
    titles.emplace_back(message.title);
    styles.push_back(message.style);
    if (answers_.empty()) return defaultAnswer(message.style);
    int const answer = answers_.front();
    answers_.pop_front();
    return answer;
}

Input ScriptedUser::next(HWND dialog) {
    if (steps_.empty()) return {.kind = Input::Kind::leave};
    Step const step = std::move(steps_.front());
    steps_.pop_front();
    return step(dialog);
}

void ScriptedUser::beep(unsigned int kind) {
    beeps.push_back(kind);
}

void ScriptedUser::movePointer(POINT place) {
    pointers.push_back(place);
}

}  // namespace tqplatform
