#include "tqplatform/desktop/EditText.h"

#include <algorithm>

#include "tqplatform/desktop/Messages.h"

namespace tqplatform {
namespace {

constexpr unsigned char firstPrintable = 0x20;

}  // namespace

void EditText::set(std::string_view text) {
    text_ = text;
    anchor_ = caret_ = 0;
}

void EditText::select(std::intptr_t start, std::intptr_t end) {
    auto const place = [this](std::intptr_t given) {
        return given < 0 ? text_.size() : std::min(static_cast<std::size_t>(given), text_.size());
    };
    if (start < 0) {
        anchor_ = caret_;
        return;
    }
    std::size_t const from = place(start);
    std::size_t const to = place(end);
    anchor_ = std::min(from, to);
    caret_ = std::max(from, to);
}

EditText::Effect EditText::replace(std::string_view with) {
    std::size_t const kept = text_.size() - (end() - start());
    std::size_t const room = limit_ > kept ? limit_ - kept : 0;
    Effect const effect{start() != end() || (!with.empty() && room > 0), with.size() > room};
    with = with.substr(0, room);
    std::size_t const place = start();
    text_.replace(place, end() - place, with);
    anchor_ = caret_ = place + with.size();
    return effect;
}

EditText::Effect EditText::type(char c) {
    if (c == static_cast<char>(VK_BACK))
        return erase(caret_ - std::min<std::size_t>(caret_, 1), caret_);
    if (static_cast<unsigned char>(c) < firstPrintable) return {};
    return replace({&c, 1});
}

EditText::Effect EditText::press(unsigned int key, bool extend) {
    switch (key) {
        case VK_LEFT:
        case VK_UP:
            moveTo(caret_ - std::min<std::size_t>(caret_, 1), extend);
            return {};
        case VK_RIGHT:
        case VK_DOWN:
            moveTo(std::min(caret_ + 1, text_.size()), extend);
            return {};
        case VK_HOME:
            moveTo(0, extend);
            return {};
        case VK_END:
            moveTo(text_.size(), extend);
            return {};
        case VK_DELETE:
            return erase(caret_, std::min(caret_ + 1, text_.size()));
        default:
            return {};
    }
}

void EditText::moveTo(std::size_t place, bool extend) {
    caret_ = place;
    if (!extend) anchor_ = place;
}

// Erases the selection, or what is between two places if there is none.
EditText::Effect EditText::erase(std::size_t from, std::size_t to) {
    if (anchor_ == caret_) select(static_cast<std::intptr_t>(from), static_cast<std::intptr_t>(to));
    return replace({});
}

}  // namespace tqplatform
