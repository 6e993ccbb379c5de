// Pooled strings against std::string and the C runtime. The first byte of an input says what is
// tried: "d" a format with a whole number, "f" one with a number with decimals, anything else edits
// of three strings that share their texts.

#include "tqlib/foundation/CStr.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>

#include "support/Check.h"
#include "support/Input.h"
#include "support/NumberLocale.h"

namespace {

std::string_view textOf(CStr const &text) {
    return {static_cast<char const *>(text), text.GetLength()};
}

// A directive that both know: flags, width, precision and its last character.
std::string directive(Input &input, std::string_view conversions) {
    std::string result = "%";
    for (char const flag : {'-', '+', ' ', '#', '0'})
        if (input.pick(2) == 1) result += flag;
    if (input.pick(2) == 1) result += std::to_string(input.pick(250) + 1);
    if (input.pick(2) == 1) result += "." + std::to_string(input.pick(250));
    return result + conversions[input.pick(static_cast<unsigned>(conversions.size()))];
}

// Any text as one directive for the value: only harm would show.
template <typename Value>
void tryWild(Input &input, Value value) {
    constexpr bool whole = std::is_same_v<Value, int>;
    std::string wild = input.text('\0').substr(0, 100);
    std::erase_if(wild, [](char c) { return std::strchr("-+0 #*.123456789hL", c) == nullptr; });
    CStr text;
    text.Format(("%" + wild + (whole ? "d" : "g")).c_str(), value);
}

template <typename Value>
void tryFormat(Input &input, std::string_view conversions) {
    std::string const own = directive(input, conversions);
    std::string const format = "a" + own + "|";
    auto const value = input.raw<Value>();
    std::array<char, 1000> expected;
    std::snprintf(expected.data(), expected.size(), own.c_str(), value);
    CStr text("replaced");
    text.Format(format.c_str(), value);
    expectSame(own.c_str(), textOf(text), "a" + std::string(expected.data()).substr(0, 319) + "|");
    tryWild(input, value);
}

class Edits {
  public:
    void append(Input & /*script*/) {
        library() += libraries_[other_];
        model() += models_[other_];
        cut();
    }
    void appendText(Input &script) {
        std::string const text = script.text('|').c_str();
        library() += text.c_str();
        model() += text;
        cut();
    }
    void appendOwn(Input &script) {
        auto const from = static_cast<unsigned short>(takePlace(script));
        auto const count = static_cast<unsigned short>(model().size() - from);
        library().Append(library(), from, count);
        model() += model().substr(from);
        cut();
    }
    void appendCharacter(Input &script) {
        char const c = script.take();
        library() += c;
        model() += c;
    }
    void appendNumber(Input &script) {
        auto const number = script.raw<int>();
        library().Append(number);
        model() += std::to_string(number);
    }
    void prepend(Input &script) {
        std::size_t const from = takePlace(script);
        library().Prepend(static_cast<char const *>(library()) + from);
        model() = std::string(model().c_str() + from) + model();
        cut();
    }
    void assign(Input & /*script*/) {
        library() = libraries_[other_];
        model() = models_[other_];
    }
    void assignTail(Input &script) {
        std::size_t const from = takePlace(script);
        library() = static_cast<char const *>(library()) + from;
        model() = std::string(model().c_str() + from);
    }
    void mid(Input &script) {
        auto const start = takeCount(script);
        auto const count = takeCount(script);
        libraries_[other_].Mid(start, count, library());
        std::string const &from = models_[other_];
        model() = start < from.size() ? std::string(from.substr(start, count)) : "";
    }
    void right(Input &script) {
        auto const count = takeCount(script);
        libraries_[other_].Right(count, library());
        std::string const from = models_[other_];
        model() = from.substr(from.size() - std::min<std::size_t>(count, from.size()));
    }
    void truncate(Input &script) {
        auto const count = takeCount(script);
        library().Truncate(count);
        model() = model().substr(0, count);
    }
    void erase(Input &script) {
        auto const start = takeCount(script);
        auto const count = takeCount(script);
        library().Delete(start, count);
        if (start < model().size())
            model().erase(start, count);
        else
            model().clear();
    }
    void eraseRight(Input &script) {
        auto const count = takeCount(script);
        library().DeleteRight(count);
        model().resize(model().size() - std::min<std::size_t>(count, model().size()));
    }
    void reserve(Input &script) { library().Reserve(takeCount(script)); }
    void compact(Input &script) { library().Compact(takeCount(script)); }
    void empty(Input & /*script*/) {
        library().Empty();
        model().clear();
    }
    void clear(Input & /*script*/) {
        library().Clear();
        model().clear();
    }
    void join(Input & /*script*/) {
        library() = libraries_[other_] + library();
        model() = models_[other_] + model();
        cut();
    }
    void find(Input &script) {
        char const c = script.take();
        std::size_t const found = model().find(c);
        std::size_t const end = model().find('\0');
        bool const within = found < end || c == '\0';
        int const place = c == '\0' ? static_cast<int>(std::min(end, model().size()))
                          : within && found != std::string::npos ? static_cast<int>(found)
                                                                 : -1;
        expectSame("find", library().Find(c), place);
    }
    void format(Input & /*script*/) {
        library().Format("%s-%!", static_cast<char const *>(library()), &libraries_[other_]);
        std::string const front = std::string(model().c_str()) + "-";
        model() = front + (other_ == current_ ? front : models_[other_]);
        cut();
    }
    void choose(Input &script) {
        current_ = script.pick(3);
        other_ = script.pick(3);
    }

    void expectSameTexts() const {
        for (std::size_t i = 0; i < models_.size(); ++i) {
            expectSame("text", textOf(libraries_[i]), models_[i]);
            expectSame("terminator", static_cast<char const *>(libraries_[i])[models_[i].size()],
                       '\0');
        }
        expectSame("equal", libraries_[0] == libraries_[1], models_[0] == models_[1] ? 1 : 0);
    }

  private:
    static constexpr std::size_t longest = 3000;

    static unsigned short takeCount(Input &script) {
        unsigned const count = script.pick(100);
        return static_cast<unsigned short>(count == 99 ? 65000 : count * count / 9);
    }

    CStr &library() { return libraries_[current_]; }
    std::string &model() { return models_[current_]; }
    std::size_t takePlace(Input &script) { return script.pick(256) % (model().size() + 1); }

    void cut() {
        model().resize(std::min(model().size(), longest));
        library().Truncate(longest);
    }

    std::array<CStr, 3> libraries_;
    std::array<std::string, 3> models_;
    std::size_t current_ = 0;
    std::size_t other_ = 1;
};

constexpr Step<Edits> steps[] = {
    {'+', &Edits::append},       {'"', &Edits::appendText},
    {'a', &Edits::appendOwn},    {'c', &Edits::appendCharacter},
    {'n', &Edits::appendNumber}, {'p', &Edits::prepend},
    {'=', &Edits::assign},       {'A', &Edits::assignTail},
    {'M', &Edits::mid},          {'R', &Edits::right},
    {'T', &Edits::truncate},     {'D', &Edits::erase},
    {'>', &Edits::eraseRight},   {'r', &Edits::reserve},
    {'k', &Edits::compact},      {'e', &Edits::empty},
    {'x', &Edits::clear},        {'j', &Edits::join},
    {'F', &Edits::find},         {'f', &Edits::format},
    {'o', &Edits::choose},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    char const what = input.take();
    if (what == 'd') {
        tryFormat<int>(input, "diouxX");
    } else if (what == 'f') {
        NumberLocale const locale(input.pick(2) == 1);
        tryFormat<double>(input, "eEfgG");
    } else {
        Edits edits;
        runScript(edits, input, steps);
        edits.expectSameTexts();
    }
    return 0;
}
