#include "tqlib/calc/TQHpCalculator.h"

#include <muParser.h>

#include "Job.h"
#include "Nearly.h"

namespace {

constexpr int evaluations = 100;

/// The variables of the formula, which change from one evaluation to the next.
struct Plant {
    double flow = 0;
    double heat = 0;
    double loss = 0;

    void set(int step) {
        flow = 1.25 * step;
        heat = 4.1868 - 0.01 * step;
        loss = 3.0 + step;
    }
};

constexpr auto calculateWithMuparser = [](auto take) {
    Plant plant;
    mu::Parser parser;
    parser.DefineVar("FLOW", &plant.flow);
    parser.DefineVar("HEAT", &plant.heat);
    parser.DefineVar("LOSS", &plant.loss);
    for (int step = 0; step < evaluations; ++step) {
        plant.set(step);
        parser.SetExpr("FLOW * HEAT + sqrt(LOSS) / 2.5 - 1.8");
        take(parser.Eval());
    }
};

constexpr auto calculateWithTqlib = [](auto take) {
    Plant plant;
    TQHpCalculator calculator;
    calculator.addVariable("FLOW", &plant.flow);
    calculator.addVariable("HEAT", &plant.heat);
    calculator.addVariable("LOSS", &plant.loss);
    for (int step = 0; step < evaluations; ++step) {
        plant.set(step);
        // CLX drops the result before, so that none pile up on the stack.
        take(calculator.calculate("CLX FLOW HEAT * LOSS SQRT 2.5 / + 1.8 -"));
    }
};

auto const calculating = Job<double>("calculate")
                             .peer("muparser", calculateWithMuparser)
                             .contender("tqlib", calculateWithTqlib, nearly);

}  // namespace
