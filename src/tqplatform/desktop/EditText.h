#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tqplatform {

/// The text of a field of one line, its selection, and what keys do to them. Places count
/// characters from 0; the caret stands at one end of the selection.
class EditText {
  public:
    /// What a key did.
    struct Effect {
        bool changed = false;  ///< the text is another one
        bool cut = false;      ///< the limit kept characters out
    };

    std::string_view text() const { return text_; }
    std::size_t start() const { return anchor_ < caret_ ? anchor_ : caret_; }
    std::size_t end() const { return anchor_ < caret_ ? caret_ : anchor_; }
    std::size_t caret() const { return caret_; }

    /// The most characters that replace() leaves; `limit` 0 is as many as possible.
    std::size_t limit() const { return limit_; }
    void setLimit(std::size_t limit) { limit_ = limit == 0 ? mostCharacters : limit; }

    /// Sets the text, without a limit, and the caret in front of it.
    void set(std::string_view text);

    /// Selects from `start` to `end`, cut to the text; -1 as the end is the end of the text, a
    /// negative start takes the selection away. The caret stands behind it.
    void select(std::intptr_t start, std::intptr_t end);

    /// Replaces the selection.
    Effect replace(std::string_view with);

    /// Types a character: Backspace deletes, other control characters do nothing.
    Effect type(char c);

    /// Presses a key, a VK_ value: it moves the caret, with `extend` the selection's end, or
    /// deletes.
    Effect press(unsigned int key, bool extend);

  private:
    static constexpr std::size_t mostCharacters = 0x7FFFFFFE;
    static constexpr std::size_t limitAtFirst = 32766;

    void moveTo(std::size_t place, bool extend);
    Effect erase(std::size_t from, std::size_t to);

    std::string text_;
    std::size_t anchor_ = 0;
    std::size_t caret_ = 0;
    std::size_t limit_ = limitAtFirst;
};

}  // namespace tqplatform
