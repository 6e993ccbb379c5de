#pragma once

// Message maps: which member function of a window's object handles which message.
//
//     class Question : public CDialog {
//         ...
//         void OnJa();
//         static tqplatform::MessageMap const messageMap;
//         static tqplatform::MessageEntry const _messageEntries[];
//     };
//
//     constinit tqplatform::MessageEntry const Question::_messageEntries[] = {
//         tqplatform::onCommand<&Question::OnJa>(BN_CLICKED, 920)};
//     constinit tqplatform::MessageMap const Question::messageMap{&CDialog::messageMap,
//                                                                 Question::_messageEntries};

#include <span>

#include "tqplatform/desktop/Window.h"

class CScrollBar;
class CWnd;

namespace tqplatform {

/// Calls a handler with the parameters of a message and gives its answer.
using MessageCall = LRESULT (*)(CWnd &window, WPARAM first, LPARAM second);

/// An entry of a message map.
struct MessageEntry {
    unsigned int message;
    unsigned int code;  ///< of commands: the notification
    unsigned int firstId;
    unsigned int lastId;  ///< of commands: the identifiers from first to last
    bool reflected;       ///< a notification of the window itself, ahead of its parent
    MessageCall call;
};

/// The map of the class under a class, null for none, and the entries of its own.
struct MessageMap {
    MessageMap const *base;
    std::span<MessageEntry const> entries;
};

namespace detail {

/// The object of a window, if it is a scroll bar, or null.
TQPLATFORM_API CScrollBar *scrollBarOf(LPARAM window);

template <class Class>
LRESULT call(Class &object, void (Class::*handler)(), WPARAM /*first*/, LPARAM /*second*/) {
    (object.*handler)();
    return 1;
}

template <class Class>
LRESULT call(Class &object, void (Class::*handler)(unsigned int, unsigned int, unsigned int),
             WPARAM first, LPARAM second) {
    auto const words = static_cast<unsigned long>(second);
    (object.*handler)(static_cast<unsigned int>(first), lowWord(words), highWord(words));
    return 0;
}

template <class Class>
LRESULT call(Class &object, void (Class::*handler)(unsigned int, unsigned int, CScrollBar *),
             WPARAM first, LPARAM second) {
    auto const words = static_cast<unsigned long>(first);
    (object.*handler)(lowWord(words), highWord(words), scrollBarOf(second));
    return 0;
}

template <class Class>
LRESULT call(Class &object, LRESULT (Class::*handler)(WPARAM, LPARAM), WPARAM first,
             LPARAM second) {
    return (object.*handler)(first, second);
}

template <class Class, class Function>
Class &objectOf(CWnd &window, Function Class::*) {
    return static_cast<Class &>(window);
}

template <auto handler>
LRESULT callHandler(CWnd &window, WPARAM first, LPARAM second) {
    return call(objectOf(window, handler), handler, first, second);
}

}  // namespace detail

/// An entry for a message; `handler` is a member function of one of the forms above.
template <auto handler>
constexpr MessageEntry onMessage(unsigned int message) {
    return {message, 0, 0, 0, false, &detail::callHandler<handler>};
}

/// An entry for a notification of the control `id`, or of a menu.
template <auto handler>
constexpr MessageEntry onCommand(unsigned int code, unsigned int id) {
    return {WM_COMMAND, code, id, id, false, &detail::callHandler<handler>};
}

/// An entry for a notification of the control itself: its parent doesn't get it then.
template <auto handler>
constexpr MessageEntry onReflected(unsigned int code) {
    return {WM_COMMAND, code, 0, 0, true, &detail::callHandler<handler>};
}

}  // namespace tqplatform
