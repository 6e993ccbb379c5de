#include "tqlib/calc/TQHpCalculator.h"

#include <cstdlib>
#include <cstring>

#include "tqlib/calc/TQHpKeywords.h"
#include "tqlib/calc/TQHpOperations.h"
#include "tqlib/foundation/ScanNumber.h"

namespace {

constexpr char blank = ' ';

/// Takes the first token off `rest`; an empty one at the end of the text.
std::string_view takeToken(std::string_view &rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(blank), rest.size()));
    std::string_view const token = rest.substr(0, rest.find(blank));
    rest.remove_prefix(token.size());
    return token;
}

/// What atof makes of `token`, behind which a blank or the terminator stands.
double toNumber(std::string_view token) {
    double value = 0.0;
    char const *const text = token.data();
    auto const *const behind =
        tqlib::detail::readPlainNumber(text, tqlib::detail::decimalPoint(), value);
    return behind != nullptr ? value : std::strtod(text, nullptr);
}

}  // namespace

TQHpCalculator::TQHpCalculator() : registers_{}, error_(0) {
    stack_.add(0.0);
}

// The commands go first: they point at variables.
TQHpCalculator::~TQHpCalculator() {
    commands_.empty();
}

int TQHpCalculator::syntaxCheck(char const *text) {
    std::string_view rest = text == nullptr ? "" : text;
    commands_.toLast();
    for (auto token = takeToken(rest); !token.empty(); token = takeToken(rest))
        commands_.add(compile(token));
    return 0;
}

// Keywords come before variables, and variables before numbers.
TQHpBefehl TQHpCalculator::compile(std::string_view token) {
    int const keyword = tqlib::detail::findKeyword(token);
    if (keyword >= 0) return TQHpBefehl(keyword);
    TQHpVariable *const variable = variables_.find([=](TQHpVariable const &entry) {
        return tqlib::detail::equalsInCapitals(token, entry.name);
    });
    if (variable != nullptr) return TQHpBefehl(TQHpBefehl::pushVariable, variable);
    return TQHpBefehl(TQHpBefehl::pushNumber, toNumber(token));
}

double TQHpCalculator::calculate(char const *text) {
    syntaxCheck(text);
    return reCalculate();
}

double TQHpCalculator::reCalculate() {
    while (commands_.count() != 0) {
        commands_.toFirst();
        TQHpOperations::run(*this, commands_.remove());
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
