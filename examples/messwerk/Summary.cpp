#include "Summary.h"

#include <algorithm>
#include <cmath>

#include "Words.h"

namespace messwerk {
namespace {

constexpr std::size_t mostListed = 20;
constexpr double vanishes = 0.0000005;  // rounds to 0.000000

int widthOf(std::string const &text) {
    return static_cast<int>(text.size());
}

void printLabel(std::FILE *out, char const *label, std::string const &text) {
    std::fprintf(out, "%-8s%s\n", label, text.c_str());
}

}  // namespace

// Neumaier's summation: the rounding error of each addition is kept and added at the end.
void Statistics::add(double value) {
    double const sum = sum_ + value;
    bool const sumIsLarger = std::fabs(sum_) >= std::fabs(value);
    lost_ += sumIsLarger ? (sum_ - sum) + value : (value - sum) + sum_;
    sum_ = sum;

    minimum_ = count_ == 0 ? value : std::min(minimum_, value);
    maximum_ = count_ == 0 ? value : std::max(maximum_, value);
    if (value != 0.0 && std::fabs(value) <= vanishes) ++vanishing_;
    ++count_;
}

Summary::Summary(Options const &options)
    : input_(options.input),
      output_(options.output),
      columns_(resultColumns(options)),
      statistics_(columns_.size()) {}

void Summary::add(Row const &row) {
    ++written_;
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].kind == ColumnKind::Number) statistics_[i].add(row[i].number);
}

void Summary::refuse(long line, std::string const &reason) {
    ++refused_;
    if (refusals_.size() < mostListed) refusals_.push_back({line, reason});
}

void Summary::print(std::FILE *out, long blankLines) const {
    printLabel(out, "Input", input_);
    printLabel(out, "Output", output_);
    printLabel(out, "Rows",
               std::to_string(rows()) + " read, " + std::to_string(refused_) + " refused, " +
                   std::to_string(written_) + " written");
    if (blankLines > 0) printLabel(out, "", counted(blankLines, "blank line") + " passed over");
    printColumns(out);
    printVanishing(out);
    printRefusals(out);
}

void Summary::printColumns(std::FILE *out) const {
    if (written_ == 0) return;
    int width = widthOf("Column");
    for (Column const &column : columns_)
        width = std::max(width, widthOf(column.name));
    std::fprintf(out, "\n%-*s  %14s  %14s  %14s\n", width, "Column", "Minimum", "Maximum", "Mean");
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].kind != ColumnKind::Number) continue;
        Statistics const &values = statistics_[i];
        std::fprintf(out, "%-*s  %14.9g  %14.9g  %14.9g\n", width, columns_[i].name.c_str(),
                     values.minimum(), values.maximum(), values.mean());
    }
}

// The library writes six decimals.
void Summary::printVanishing(std::FILE *out) const {
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (long const count = statistics_[i].vanishing(); count > 0)
            std::fprintf(out, "\n%s: %s too small for six decimals, written as 0\n",
                         columns_[i].name.c_str(), counted(count, "value").c_str());
}

void Summary::printRefusals(std::FILE *out) const {
    if (refused_ == 0) return;
    std::fputs("\nRefused rows\n", out);
    for (Refusal const &refusal : refusals_)
        std::fprintf(out, "  line %ld: %s\n", refusal.line, refusal.reason.c_str());
    long const more = refused_ - static_cast<long>(refusals_.size());
    if (more > 0) std::fprintf(out, "  and %ld more\n", more);
}

}  // namespace messwerk
