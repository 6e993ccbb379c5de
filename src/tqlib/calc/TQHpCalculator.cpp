#include "tqlib/calc/TQHpCalculator.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "tqlib/calc/TQHpKeywords.h"
#include "tqlib/calc/TQHpOperations.h"
#include "tqlib/foundation/ScanNumber.h"

namespace {

using tqlib::detail::takeToken;
using tqlib::detail::TQHpToken;

/// True if `token` in capitals is `name`, behind whose first character we are already.
bool endsLike(std::string_view token, char const *name) {
    for (char const c : token.substr(1))
        if (tqlib::detail::toCapital(c) != *++name) return false;
    return name[1] == '\0';
}

/// True if `token` in capitals is `name`.
bool isNamed(TQHpToken const &token, char const *name) {
    return name != nullptr && *name == static_cast<char>(token.key) && endsLike(token.text, name);
}

/// What atof makes of `token`, behind which a blank or the terminator stands.
double toNumber(std::string_view token) {
    double value = 0.0;
    auto const *const behind = tqlib::detail::readPlainNumber<tqlib::detail::BytewiseDigits>(
        token.data(), tqlib::detail::decimalPoint(), value);
    // The C runtime gets the token alone: it would pass over white space into the next one.
    return behind != nullptr ? value : std::strtod(std::string(token).c_str(), nullptr);
}

}  // namespace

TQHpCalculator::TQHpCalculator() : registers_{}, error_(0) {
    stack_.add(0.0);
}

// The commands go first: they point at variables.
TQHpCalculator::~TQHpCalculator() {
    commands_.empty();
}

// Keywords come before variables, and variables before numbers.
[[gnu::always_inline]] inline TQHpBefehl TQHpCalculator::compile(TQHpToken const &token) {
    int const keyword = tqlib::detail::findKeyword(token);
    if (keyword >= 0) return TQHpBefehl(keyword);
    TQHpVariable *const variable =
        variables_.find([&](TQHpVariable const &entry) { return isNamed(token, entry.name); });
    if (variable != nullptr) return TQHpBefehl(TQHpBefehl::pushVariable, variable);
    return TQHpBefehl(TQHpBefehl::pushNumber, toNumber(token.text));
}

int TQHpCalculator::syntaxCheck(char const *text) {
    if (text == nullptr) return 0;
    commands_.toLast();
    for (auto token = takeToken(text); !token.text.empty(); token = takeToken(text))
        commands_.add(compile(token));
    return 0;
}

double TQHpCalculator::calculate(char const *text) {
    if (text == nullptr || commands_.count() != 0) {
        syntaxCheck(text);
        return reCalculate();
    }
    // Nothing waits, so each command can run as soon as it is compiled, with the same result.
    for (auto token = takeToken(text); !token.text.empty(); token = takeToken(text)) {
        if (TQHpOperations::run(*this, compile(token))) continue;
        syntaxCheck(text);
        throw TQException::EMPTY_LIST();
    }
    return stack_.current();
}

double TQHpCalculator::reCalculate() {
    while (commands_.count() != 0) {
        commands_.toFirst();
        if (!TQHpOperations::run(*this, commands_.remove())) throw TQException::EMPTY_LIST();
    }
    return stack_.current();
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
    double const *const value = stack_.fromLast(index);
    return value == nullptr ? 0.0 : *value;
}
