#include "tqlib/calc/TQHpCalculator.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tqlib/calc/TQHpKeywords.h"
#include "tqlib/calc/TQHpOperations.h"
#include "tqlib/foundation/ScanNumber.h"

namespace {

using tqlib::detail::takeToken;
using tqlib::detail::TQHpToken;

/// True if the characters of `token` behind its key, in capitals, are those behind `name`'s.
bool endsLike(std::string_view token, char const *name) {
    for (char const c : token.substr(tqlib::detail::keyLength))
        if (tqlib::detail::toCapital(c) != *name++) return false;
    return *name == '\0';
}

/// True if `token`, whose key is in capitals, is `name`.
bool isNamed(TQHpToken const &token, char const *name) {
    if (name == nullptr) return false;
    for (std::uint64_t key = token.key; key != 0; key >>= 8)
        if (*name++ != static_cast<char>(key)) return false;
    return token.text.size() <= tqlib::detail::keyLength ? *name == '\0'
                                                         : endsLike(token.text, name);
}

/// True if `token` begins with a letter, behind blanks and signs.
bool isWord(std::string_view token) {
    std::size_t const first = token.find_first_not_of("\t\n\v\f\r+-");
    return first != token.npos && std::isalpha(static_cast<unsigned char>(token[first])) != 0;
}

/// What atof makes of `token`, with the decimal point `point`, but for words that it takes for
/// numbers, such as INF: a misspelt name is 0.0.
double toNumber(std::string_view token, char point) {
    double value = 0.0;
    auto const *const behind =
        tqlib::detail::readPlainNumber<tqlib::detail::BytewiseDigits>(token.data(), point, value);
    // The C runtime gets the token alone: it would pass over white space into the next one.
    if (behind != nullptr) return value;
    return isWord(token) ? 0.0 : std::strtod(std::string(token).c_str(), nullptr);
}

}  // namespace

TQHpCalculator::TQHpCalculator() : stack_{0.0}, registers_{}, error_(0) {}

TQHpCalculator::~TQHpCalculator() = default;

// Keywords come before variables, and variables before numbers.
[[gnu::always_inline]] inline TQHpBefehl TQHpCalculator::compile(TQHpToken token, char point) {
    int keyword = tqlib::detail::findKeyword(token);
    if (keyword < 0 && token.capitalise()) keyword = tqlib::detail::findKeyword(token);
    if (keyword >= 0) return TQHpBefehl(keyword);
    TQHpVariable *const variable =
        variables_.find([&](TQHpVariable const &entry) { return isNamed(token, entry.name); });
    if (variable != nullptr) return TQHpBefehl(TQHpBefehl::pushVariable, variable);
    return TQHpBefehl(TQHpBefehl::pushNumber, toNumber(token.text, point));
}

int TQHpCalculator::syntaxCheck(char const *text) {
    if (text == nullptr) return 0;
    commands_.toLast();
    char const point = tqlib::detail::decimalPoint();
    for (auto token = takeToken(text); !token.text.empty(); token = takeToken(text))
        commands_.add(compile(token, point));
    return 0;
}

double TQHpCalculator::calculate(char const *text) {
    if (text == nullptr || commands_.count() != 0) {
        syntaxCheck(text);
        return reCalculate();
    }
    // Nothing waits, so each command can run as soon as it is compiled, with the same result.
    char const point = tqlib::detail::decimalPoint();
    for (auto token = takeToken(text); !token.text.empty(); token = takeToken(text)) {
        if (TQHpOperations::run(*this, compile(token, point))) continue;
        syntaxCheck(text);
        throw TQException::EMPTY_LIST();
    }
    return result();
}

double TQHpCalculator::reCalculate() {
    while (commands_.count() != 0) {
        commands_.toFirst();
        if (!TQHpOperations::run(*this, commands_.remove())) throw TQException::EMPTY_LIST();
    }
    return result();
}

void TQHpCalculator::clear() {
    commands_.empty();
}

void TQHpCalculator::addVariable(char const *name, double *value) {
    variables_.add({name, value});
}

void TQHpCalculator::deleteVariable(char const *name) {
    auto const named = [=](TQHpVariable const &entry) {
        return name != nullptr && entry.name != nullptr && std::strcmp(entry.name, name) == 0;
    };
    if (variables_.toFirstThat(named)) variables_.remove();
}

void TQHpCalculator::deleteVariable(double *value) {
    auto const bound = [=](TQHpVariable const &entry) { return entry.value == value; };
    if (variables_.toFirstThat(bound)) variables_.remove();
}

double TQHpCalculator::stackValue(unsigned int index) const {
    return index < stack_.size() ? stack_[stack_.size() - 1 - index] : 0.0;
}

double TQHpCalculator::result() const {
    if (stack_.empty()) throw TQException::EMPTY_LIST();
    return stack_.back();
}
