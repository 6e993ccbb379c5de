// What pooled strings take from the platform and from a format.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

#include "tqlib/foundation/CStr.h"
#include "tqlib/foundation/FormatNumber.h"
#include "tqlib/foundation/ScanNumber.h"
#include "tqplatform/desktop/CWnd.h"
#include "tqplatform/desktop/User.h"
#include "tqplatform/framework/ModuleState.h"
#include "tqplatform/runtime/CodePage1252.h"

namespace {

constexpr int countDirective = 3;
constexpr int wideTextDirective = 4;

/// Most characters that are taken from a string resource, as a text and as a format.
constexpr std::size_t longestResource = 16383;
constexpr std::size_t longestResourceFormat = 511;

/// Gives the text of the string resource `id`, cut; false if there is none.
bool findText(unsigned int id, std::size_t longest, std::string &text) {
    auto const *resource = AfxGetModuleState()->findResource(tqplatform::ResourceKind::string, id);
    if (resource == nullptr) return false;
    text.assign(static_cast<char const *>(resource->data), std::min(resource->size, longest));
    return true;
}

/// The characters between a '%' and the one that ends its directive, and what they ask for.
class Directive {
  public:
    /// The number of characters from `text` on that can belong to one.
    static std::size_t length(char const *text) {
        std::size_t count = 0;
        while (isPart[static_cast<unsigned char>(text[count])])
            ++count;
        return count;
    }

    explicit Directive(std::string_view text) : text_(text.substr(0, longest)) {
        for (char const c : text_)
            read(c);
    }

    /// The type of a whole number.
    bool isLong() const { return longs_ == 1; }
    bool isLongLong() const { return longs_ > 1; }

    bool isShort() const { return shorts_ > 0; }

    /// True if a whole number is formatted in the shortest way.
    bool isPlain() const { return !isShort() && precision_ == none && !hasField(); }

    /// The number of decimals if nothing else is asked for, or none.
    int decimals() const {
        constexpr int usual = 6;
        if (hasField()) return none;
        return precision_ == none ? usual : precision_;
    }

    /// How many characters of a text of that length are taken.
    std::size_t limit(std::size_t length) const {
        std::size_t const point = text_.find('.');
        if (point == std::string_view::npos || point + 1 == text_.size()) return length;
        std::string const number(text_.substr(point + 1));
        long const count = std::strtol(number.c_str(), nullptr, 10);
        return count < 0 ? length : std::min(length, static_cast<std::size_t>(count));
    }

    /// The directive for snprintf with an argument of the type that `modifier` names.
    std::string forPrintf(char const *modifier, char conversion) const {
        std::string text = '%' + flags_;
        if (width_ != none) text += std::to_string(width_);
        if (precision_ != none) text += '.' + std::to_string(precision_);
        return text + modifier + conversion;
    }

  private:
    static constexpr auto isPart = [] {
        std::array<bool, 256> table{};
        for (char const c : std::string_view("-+0 #*.123456789hlL"))
            table[static_cast<unsigned char>(c)] = true;
        return table;
    }();

    static constexpr int none = -1;
    static constexpr std::size_t longest = 62;  ///< with the '%' and a NUL it is 64
    static constexpr int greatest = 65535;      ///< width or precision

    bool hasField() const { return !flags_.empty() || width_ != none; }

    void read(char c) {
        bool const digit = c >= '0' && c <= '9';
        bool const flag = c == '0' && width_ == none && precision_ == none;
        if (c == '.')
            precision_ = 0;
        else if (digit && !flag)
            addDigit(precision_ != none ? precision_ : width_, c - '0');
        else if (flag || std::strchr("-+ #", c) != nullptr)
            flags_ += c;
        longs_ += c == 'l';
        shorts_ += c == 'h';
    }

    static void addDigit(int &number, int digit) {
        number = std::min(std::max(number, 0) * 10 + digit, greatest);
    }

    std::string_view text_;
    std::string flags_;
    int width_ = none;
    int precision_ = none;
    int longs_ = 0;
    int shorts_ = 0;
};

/// The arguments of a format.
class Arguments {
  public:
    explicit Arguments(std::va_list list) { va_copy(list_, list); }
    Arguments(Arguments const &) = delete;
    Arguments &operator=(Arguments const &) = delete;
    ~Arguments() { va_end(list_); }

    template <typename Value>
    Value next() {
        return va_arg(list_, Value);
    }

  private:
    std::va_list list_;
};

/// A number as snprintf writes it with a directive, cut to its room.
class NumberText {
  public:
    template <typename Value>
    NumberText(std::string const &directive, Value value) {
        if (std::snprintf(text_, sizeof text_, directive.c_str(), value) < 0) text_[0] = '\0';
    }
    char const *text() const { return text_; }

  private:
    char text_[320];
};

/// Appends to a text what the directives of a format ask for.
class Formatter {
  public:
    /// `replaced` is the string that `text` is going to replace.
    Formatter(CStr &text, CStr const &replaced, std::va_list arguments)
        : text_(text), replaced_(replaced), arguments_(arguments) {}

    /// Appends the argument of a directive that ends with `conversion`.
    void append(Directive const &directive, char conversion) {
        switch (conversion) {
            case 's':
                return appendText(directive);
            case '!':
                return appendString();
            case 'c':
            case 'C':
                return appendCharacter(directive, conversion);
            case 'd':
            case 'i':
                return appendWhole<int, long, long long>(directive, conversion);
            case 'o':
            case 'u':
            case 'x':
            case 'X':
                return appendWhole<unsigned, unsigned long, unsigned long long>(directive,
                                                                                conversion);
            case 'e':
            case 'E':
            case 'f':
            case 'g':
            case 'G':
                return appendReal(directive, conversion);
            case 'p':
                return appendNumber(directive, conversion, arguments_.next<void *>());
            case 'n':
                CStrFatal(countDirective);
            case 'S':
                CStrFatal(wideTextDirective);
            default:
                text_ += conversion;
        }
    }

  private:
    void appendText(Directive const &directive) {
        char const *const text = arguments_.next<char const *>();
        if (text == nullptr) return;
        std::size_t const length = directive.limit(std::strlen(text));
        if (length > CStr::mostCharacters)
            text_ += text;  // reports that it is too long
        else
            text_.Append(text, static_cast<unsigned short>(length));
    }

    // The string that is replaced is already empty, and has what was appended so far.
    void appendString() {
        CStr const *const string = arguments_.next<CStr const *>();
        if (string != nullptr) text_ += string == &replaced_ ? text_ : *string;
    }

    template <typename Value>
    void appendNumber(Directive const &directive, char conversion, Value value,
                      char const *modifier = "") {
        text_ += NumberText(directive.forPrintf(modifier, conversion), value).text();
    }

    // C is of Unicode and c a byte, unless the directive says otherwise.
    void appendCharacter(Directive const &directive, char conversion) {
        bool const isWide = directive.isLong() || (conversion == 'C' && !directive.isShort());
        int const value = arguments_.next<int>();
        appendNumber(directive, 'c',
                     isWide ? int{tqplatform::fromUnicode(static_cast<char32_t>(value))} : value);
    }

    template <typename Short, typename Long, typename LongLong>
    void appendWhole(Directive const &directive, char conversion) {
        if (directive.isLongLong())
            appendWhole(directive, conversion, arguments_.next<LongLong>(), "ll");
        else if (directive.isLong())
            appendWhole(directive, conversion, arguments_.next<Long>(), "l");
        else
            appendWhole(directive, conversion, arguments_.next<Short>(),
                        directive.isShort() ? "h" : "");
    }

    template <typename Value>
    void appendWhole(Directive const &directive, char conversion, Value value,
                     char const *modifier) {
        bool const decimal = conversion == 'd' || conversion == 'i' || conversion == 'u';
        if (!decimal || !directive.isPlain())
            return appendNumber(directive, conversion, value, modifier);
        char digits[tqlib::detail::plainNumberRoom];
        appendDigits(digits, tqlib::detail::formatNumber(digits, value));
    }

    void appendReal(Directive const &directive, char conversion) {
        double const value = arguments_.next<double>();
        char digits[tqlib::detail::plainNumberRoom];
        char const *end = nullptr;
        if (conversion == 'f') {
            auto const decimals = static_cast<unsigned>(directive.decimals());
            char const point = tqlib::detail::decimalPoint();
            end = tqlib::detail::formatFixed(digits, value, decimals, point);
        }
        if (end == nullptr) return appendNumber(directive, conversion, value);
        appendDigits(digits, end);
    }

    void appendDigits(char const *digits, char const *end) {
        text_.Append(digits, static_cast<unsigned short>(end - digits));
    }

    CStr &text_;
    CStr const &replaced_;
    Arguments arguments_;
};

}  // namespace

void CStrFatal(int code) {
    char text[40];
    std::snprintf(text, sizeof text, "CStr fatal %d", code);
    MessageBoxA(nullptr, text, nullptr, MB_SYSTEMMODAL | MB_ICONHAND);
    std::abort();
}

int CStr::LoadString(unsigned int id) {
    std::string text;
    if (!findText(id, longestResource, text)) return 0;
    *this = text.c_str();
    return 1;
}

void CStr::GetWindowText(CWnd *window) {
    HWND const handle = window == nullptr ? nullptr : window->m_hWnd;
    // Any window may answer anything, also without a NUL. One character more tells a text that is
    // too long.
    auto const length = static_cast<std::size_t>(
        std::clamp<LRESULT>(SendMessageA(handle, WM_GETTEXTLENGTH, 0, 0), 0, mostCharacters + 1));
    std::string text(length + 2, '\0');
    SendMessageA(handle, WM_GETTEXT, length + 1, reinterpret_cast<LPARAM>(text.data()));
    refill(text.c_str());
}

void CStr::Format(char const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    this->format(format == nullptr ? "" : format, arguments);
    va_end(arguments);
}

void CStr::Format(unsigned int id, ...) {
    std::string format;
    findText(id, longestResourceFormat, format);
    std::va_list arguments;
    va_start(arguments, id);
    this->format(format.c_str(), arguments);
    va_end(arguments);
}

// The text is built aside: the arguments may point into the present one, and memory may run out.
void CStr::format(char const *format, std::va_list arguments) {
    CStr result(*this);
    result.Empty();
    Formatter formatter(result, *this, arguments);
    for (;;) {
        std::size_t const plain = std::strcspn(format, "%");
        result.append({format, plain});
        if (format[plain] == '\0') break;
        char const *const directive = format + plain + 1;
        std::size_t const length = Directive::length(directive);
        char const conversion = directive[length];
        if (conversion == '\0') break;
        formatter.append(Directive({directive, length}), conversion);
        format = directive + length + 1;
    }
    std::swap(record_, result.record_);
}
