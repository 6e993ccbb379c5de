#include "Expressions.h"

#include <cmath>

#include "Words.h"

namespace messwerk {
namespace {

/// Variables of the saved registers. No name of a column has an equals sign.
constexpr char const *savedRegisters[] = {"=0", "=1", "=2", "=3"};

/// What is wrong with a computed value; null if nothing is.
char const *valueFault(double value) {
    if (!std::isfinite(value)) return " has no finite value";
    return std::fabs(value) < tooLarge ? nullptr : " is too large to be written";
}

}  // namespace

Expressions::Expressions(Options const &options, Row &row) {
    std::vector<Column> const columns = resultColumns(options);
    for (Column const &column : columns)
        variables_.push_back(toCapitals(column.name));
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (hasNumber(columns[i].kind))
            calculator_.addVariable(variables_[i].c_str(), &row[i].number);
    for (std::size_t i = 0; i < registers_.size(); ++i)
        calculator_.addVariable(savedRegisters[i], &registers_[i]);

    std::size_t cell = options.columns.size();
    for (Formula const &formula : options.formulas)  // the stack lasts beyond a calculation
        results_.push_back({formula.name, "CLEAR " + formula.text, &row[cell++].number});
}

std::optional<std::string> Expressions::evaluate() {
    for (Result const &result : results_) {
        *result.value = calculator_.calculate(result.program.c_str());
        char const *const fault = valueFault(*result.value);
        if (fault != nullptr) return result.name + fault;
    }
    return std::nullopt;
}

void Expressions::accept() {
    if (results_.empty()) return;
    calculator_.calculate("CLEAR RCL_3 RCL_2 RCL_1 RCL_0");
    for (unsigned i = 0; i < registers_.size(); ++i)
        registers_[i] = calculator_.stackValue(i);
}

void Expressions::refuse() {
    calculator_.calculate("=0 STO_0 =1 STO_1 =2 STO_2 =3 STO_3");
}

}  // namespace messwerk
