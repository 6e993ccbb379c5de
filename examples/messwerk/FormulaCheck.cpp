#include "FormulaCheck.h"

#include <cmath>

#include "Errors.h"
#include "Words.h"

namespace messwerk {
namespace {

/// What is wrong with the word itself; empty if nothing is.
std::string wordFault(std::string const &word, Names const &names) {
    if (auto const kind = names.kindOf(word)) return hasNumber(*kind) ? "" : "is a column of texts";
    if (auto const number = wholeNumber(word.c_str()))
        return std::isfinite(*number) ? "" : "isn't a finite number";
    return isKeyword(toCapitals(word)) ? "" : "is neither keyword nor column nor number";
}

/// A calculator for a trial run, on an empty stack, with 1.0 for every variable.
class Trial {
  public:
    explicit Trial(Names const &names) {
        for (auto const &[name, kind] : names.all())
            if (hasNumber(kind)) calculator_.addVariable(name.c_str(), &harmless_);
        while (run("+")) {
        }
    }

    /// Carries out `word`; false if it finds too few values on the stack.
    bool run(char const *word) {
        try {
            calculator_.calculate(word);
            return true;
        } catch (TQException::EMPTY_LIST const &) {
            return false;
        }
    }

    int stackSize() const { return calculator_.stackSize(); }

  private:
    double harmless_ = 1.0;
    TQHpCalculator calculator_;
};

UsageError expressionError(Formula const &formula, std::string const &what) {
    return UsageError("the expression for " + quoted(formula.name) + ": " + what);
}

}  // namespace

void checkFormula(Formula const &formula, Names const &names) {
    Trial trial(names);
    TQString const text = formula.text.c_str();
    TQString word;
    for (int at = 0; at != -1;) {
        at = text.GetToken(word, at, " ", 1);
        if (word.IsEmpty()) continue;
        std::string fault = wordFault(std::string(word), names);
        if (fault.empty() && !trial.run(word)) fault = "finds too few values";
        if (!fault.empty()) throw expressionError(formula, quoted(word.text()) + " " + fault);
    }
    int const left = trial.stackSize();
    if (left == 0) throw expressionError(formula, "it is empty");
    if (left > 1)
        throw expressionError(formula, "it leaves " + counted(left, "value") + " instead of one");
}

}  // namespace messwerk
