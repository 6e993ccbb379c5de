// The calculator against a plain interpreter. An input is a row of steps; texts and numbers of
// steps end with "|".

#include "tqlib/calc/TQHpCalculator.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "support/Check.h"
#include "support/Input.h"

namespace {

struct TooFewValues {};

class CalculatorModel {
  public:
    void compile(std::string const &text);
    double run();
    void clear() { commands_.clear(); }

    void addVariable(std::string const &name, double const *value) {
        std::size_t const place = variables_.empty() ? 0 : cursor_ + 1;
        variables_.insert(variables_.begin() + static_cast<std::ptrdiff_t>(place), {name, value});
        cursor_ = place;
    }

    template <typename Fits>
    void deleteVariable(Fits fits) {
        auto const found = std::find_if(variables_.begin(), variables_.end(), fits);
        if (found == variables_.end()) return;
        cursor_ = static_cast<std::size_t>(found - variables_.begin());
        variables_.erase(found);
        if (cursor_ == variables_.size() && cursor_ > 0) --cursor_;
    }

    struct Variable {
        std::string name;
        double const *value;
    };

    std::vector<double> stack{0.0};

  private:
    struct Command {
        std::string keyword;     ///< empty for a value
        double const *variable;  ///< null for a literal
        double number;
    };
    using Operation = void (CalculatorModel::*)();

    static std::map<std::string, Operation> const keywords;

    double pop() {
        if (stack.empty()) throw TooFewValues();
        double const value = stack.back();
        stack.pop_back();
        return value;
    }
    void push(double value) { stack.push_back(value); }

    template <double (*result)(double a, double b)>
    void binary() {
        double const a = pop();
        double const b = pop();
        push(result(a, b));
    }
    template <double (*result)(double a)>
    void unary() {
        push(result(pop()));
    }
    template <int number>
    void store() {
        if (stack.empty()) throw TooFewValues();
        registers_[number] = stack.back();
    }
    template <int number>
    void recall() {
        push(registers_[number]);
    }

    static double sum(double a, double b) { return b + a; }
    static double difference(double a, double b) { return b - a; }
    static double product(double a, double b) { return b * a; }
    static double quotient(double a, double b) { return b / a; }
    static double remainder(double a, double b) { return std::fmod(a, b); }
    static double power(double a, double b) { return std::pow(b, b < 0.0 ? std::floor(a) : a); }
    static double square(double a) { return a * a; }
    void pi() { push(3.141592653589793); }
    void e() { push(2.71); }
    void dropTop() {
        pop();
        if (stack.empty()) push(0.0);
    }
    void dropAll() { stack = {0.0}; }
    void swapTop() {
        double const a = pop();
        double const b = pop();
        push(a);
        push(b);
    }

    double registers_[4] = {};
    std::vector<Variable> variables_;
    std::size_t cursor_ = 0;
    std::deque<Command> commands_;
};

using Model = CalculatorModel;

// As atof, but for its words INF and NAN.
double numberOf(char const *token) {
    std::size_t const blanks = std::strspn(token, "\t\n\v\f\r");
    char const first = token[blanks + std::strspn(token + blanks, "+-")];
    return first == 'I' || first == 'N' ? 0.0 : std::atof(token);
}

std::map<std::string, Model::Operation> const CalculatorModel::keywords = {
    {"+", &Model::binary<&sum>},
    {"-", &Model::binary<&difference>},
    {"*", &Model::binary<&product>},
    {"/", &Model::binary<&quotient>},
    {"POW", &Model::binary<&power>},
    {"MOD", &Model::binary<&remainder>},
    {"EXP", &Model::unary<&std::exp>},
    {"LN", &Model::unary<&std::log>},
    {"LOG10", &Model::unary<&std::log10>},
    {"SIN", &Model::unary<&std::sin>},
    {"COS", &Model::unary<&std::cos>},
    {"TAN", &Model::unary<&std::tan>},
    {"ARCTAN", &Model::unary<&std::atan>},
    {"ARCCOS", &Model::unary<&std::acos>},
    {"ARCSIN", &Model::unary<&std::asin>},
    {"ABS", &Model::unary<&std::fabs>},
    {"FLOOR", &Model::unary<&std::floor>},
    {"CEIL", &Model::unary<&std::ceil>},
    {"SQRT", &Model::unary<&std::sqrt>},
    {"SQR", &Model::unary<&square>},
    {"CLX", &Model::dropTop},
    {"CLEAR", &Model::dropAll},
    {"SWAP", &Model::swapTop},
    {"PI", &Model::pi},
    {"E", &Model::e},
    {"STO_0", &Model::store<0>},
    {"STO_1", &Model::store<1>},
    {"STO_2", &Model::store<2>},
    {"STO_3", &Model::store<3>},
    {"RCL_0", &Model::recall<0>},
    {"RCL_1", &Model::recall<1>},
    {"RCL_2", &Model::recall<2>},
    {"RCL_3", &Model::recall<3>},
};

void CalculatorModel::compile(std::string const &text) {
    std::string capitals = text;
    for (char &c : capitals)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    for (char *token = std::strtok(capitals.data(), " "); token != nullptr;
         token = std::strtok(nullptr, " ")) {
        auto const variable = std::find_if(variables_.begin(), variables_.end(),
                                           [=](Variable const &v) { return v.name == token; });
        if (keywords.contains(token))
            commands_.push_back({token, nullptr, 0.0});
        else if (variable != variables_.end())
            commands_.push_back({"", variable->value, 0.0});
        else
            commands_.push_back({"", nullptr, numberOf(token)});
    }
}

double CalculatorModel::run() {
    while (!commands_.empty()) {
        Command const command = commands_.front();
        commands_.pop_front();
        if (command.keyword.empty())
            push(command.variable == nullptr ? command.number : *command.variable);
        else
            (this->*keywords.at(command.keyword))();
    }
    if (stack.empty()) throw TooFewValues();
    return stack.back();
}

// Which of two not-a-numbers an operation passes on is the compiler's choice.
void expectSameNumber(char const *what, double library, double model) {
    if (!std::isnan(library) || !std::isnan(model)) expectSame(what, library, model);
}

class Calculators {
  public:
    void calculate(Input &script) {
        std::string const text = takeText(script);
        model_.compile(text);
        evaluate([&] { return library_.calculate(text.c_str()); });
    }

    void calculateNothing(Input & /*script*/) {
        evaluate([&] { return library_.calculate(nullptr); });
    }

    void compile(Input &script) {
        std::string const text = takeText(script);
        model_.compile(text);
        expectSame("result of the check", library_.syntaxCheck(text.c_str()), 0);
        expectSameStack();
    }

    void run(Input & /*script*/) {
        evaluate([&] { return library_.reCalculate(); });
    }

    void clear(Input & /*script*/) {
        library_.clear();
        model_.clear();
        expectSameStack();
    }

    void addVariable(Input &script) {
        double *const value = &values_[script.pick(valueCount)];
        names_.push_back(takeText(script));
        library_.addVariable(names_.back().c_str(), value);
        model_.addVariable(names_.back(), value);
    }

    // A variable must outlive the commands that refer to it.
    void deleteByName(Input &script) {
        clear(script);
        std::string const name = takeText(script);
        library_.deleteVariable(name.c_str());
        model_.deleteVariable([&](Model::Variable const &v) { return v.name == name; });
    }

    void deleteByValue(Input &script) {
        clear(script);
        double *const value = &values_[script.pick(valueCount)];
        library_.deleteVariable(value);
        model_.deleteVariable([&](Model::Variable const &v) { return v.value == value; });
    }

    void setValue(Input &script) {
        double &value = values_[script.pick(valueCount)];
        value = std::strtod(takeText(script).c_str(), nullptr);
    }

  private:
    static constexpr unsigned valueCount = 4;

    static std::string takeText(Input &script) { return script.text('|').c_str(); }

    template <typename Evaluate>
    void evaluate(Evaluate evaluateLibrary) {
        double library = 0.0, model = 0.0;
        bool failed = false, modelFailed = false;
        try {
            library = evaluateLibrary();
        } catch (TQException::EMPTY_LIST const &) {
            failed = true;
        }
        try {
            model = model_.run();
        } catch (TooFewValues const &) {
            modelFailed = true;
        }
        expectSame("too few values", failed, modelFailed);
        expectSameNumber("result", library, model);
        expectSameStack();
    }

    void expectSameStack() {
        auto const &stack = model_.stack;
        expectSame("stack size", library_.stackSize(), static_cast<int>(stack.size()));
        for (unsigned i = 0; i < 20; ++i)
            expectSameNumber("stack", library_.stackValue(i),
                             i < stack.size() ? stack[stack.size() - 1 - i] : 0.0);
        expectSame("error", library_.error(), 0);
    }

    std::deque<std::string> names_;
    double values_[valueCount] = {};
    CalculatorModel model_;
    TQHpCalculator library_;
};

constexpr Step<Calculators> steps[] = {
    {'=', &Calculators::calculate},    {'0', &Calculators::calculateNothing},
    {'s', &Calculators::compile},      {'r', &Calculators::run},
    {'c', &Calculators::clear},        {'a', &Calculators::addVariable},
    {'n', &Calculators::deleteByName}, {'v', &Calculators::deleteByValue},
    {'w', &Calculators::setValue},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Calculators calculators;
    runScript(calculators, Input(data, size), steps);
    return 0;
}
