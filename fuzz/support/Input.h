#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// The bytes of one input, taken from the front. Past its end they are zeros.
class Input {
  public:
    Input(std::uint8_t const *data, std::size_t size)
        : rest_(reinterpret_cast<char const *>(data), size) {}
    explicit Input(std::string_view text) : rest_(text) {}

    bool atEnd() const { return rest_.empty(); }

    char take() {
        if (rest_.empty()) return '\0';
        char const c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    /// A number below `count`, which is at most 256. Digits give themselves.
    unsigned pick(unsigned count) { return static_cast<unsigned char>(take() - '0') % count; }

    /// The bytes of a number as they lie in memory.
    template <typename Number>
    Number raw() {
        char bytes[sizeof(Number)];
        for (char &byte : bytes)
            byte = take();
        Number number;
        std::memcpy(&number, bytes, sizeof number);
        return number;
    }

    /// The text up to `end`, which is taken and dropped, or up to the end of the input.
    std::string text(char end) {
        std::size_t const length = rest_.find(end);
        std::string result(rest_.substr(0, length));
        rest_.remove_prefix(length == std::string_view::npos ? rest_.size() : length + 1);
        return result;
    }

    /// All that is left.
    std::string rest() {
        std::string result(rest_);
        rest_ = {};
        return result;
    }

  private:
    std::string_view rest_;
};

/// `text` with each tilde and the byte behind it replaced by that byte times 41 copies of the
/// character ahead of them, so that small inputs make long lines and more than one block.
inline std::string expanded(std::string_view text) {
    constexpr std::size_t most = 80000;
    std::string result;
    for (Input input(text); !input.atEnd() && result.size() < most;) {
        char const c = input.take();
        if (c == '~' && !result.empty())
            result.append(41 * static_cast<std::size_t>(static_cast<unsigned char>(input.take())),
                          result.back());
        else
            result += c;
    }
    return result;
}

/// One thing that a script can do to a `Machine`. What it needs beside its letter it takes from the
/// script.
template <typename Machine>
struct Step {
    char letter;
    void (Machine::*run)(Input &script);
};

/// Runs the steps that the bytes of `script` name, up to a number that keeps the search fast. A
/// byte that is no step's letter stands for a step as well, so that every input does something.
template <typename Machine, std::size_t count>
void runScript(Machine &machine, Input script, Step<Machine> const (&steps)[count]) {
    for (int left = 200; left > 0 && !script.atEnd(); --left) {
        char const letter = script.take();
        Step<Machine> const *step = &steps[static_cast<unsigned char>(letter) % count];
        for (auto const &row : steps)
            if (row.letter == letter) step = &row;
        (machine.*step->run)(script);
    }
}
