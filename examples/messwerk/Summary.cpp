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

void Dates::add(double days) {
    auto const step = static_cast<long>(days - previous_);
    if (count_ > 0 && step > 0) ++steps_[step];
    first_ = count_ == 0 ? days : std::min(first_, days);
    last_ = count_ == 0 ? days : std::max(last_, days);
    previous_ = days;
    ++count_;
}

long Dates::gaps() const {
    long count = 0;
    for (auto const &[days, times] : steps_)
        if (days >= 2 * steps_.begin()->first) count += times;
    return count;
}

Summary::Summary(Options const &options)
    : input_(options.input),
      output_(options.output),
      columns_(resultColumns(options)),
      statistics_(columns_.size()),
      dates_(columns_.size()),
      nameWidth_(widthOf("Column")) {
    for (Column const &column : columns_)
        nameWidth_ = std::max(nameWidth_, widthOf(column.name));
}

void Summary::add(Row const &row) {
    ++written_;
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].kind == ColumnKind::Date)
            dates_[i].add(row[i].number);
        else if (hasNumber(columns_[i].kind))
            statistics_[i].add(row[i].number);
}

void Summary::refuse(long line, std::string const &reason) {
    ++refused_;
    if (refusals_.size() < mostListed) refusals_.push_back({line, reason});
}

void Summary::print(std::FILE *out, long blankLines) const {
    printLabel(out, "Input", input_);
    printLabel(out, "Output", output_.empty() ? "none" : output_);
    printLabel(out, "Rows",
               std::to_string(rows()) + " read, " + std::to_string(refused_) + " refused, " +
                   std::to_string(written_) + " written");
    if (blankLines > 0) printLabel(out, "", counted(blankLines, "blank line") + " passed over");
    if (written_ > 0) {
        printDates(out);
        printTimes(out);
        printColumns(out);
    }
    printVanishing(out);
    printRefusals(out);
}

void Summary::printColumns(std::FILE *out) const {
    if (!has(ColumnKind::Number)) return;
    std::fprintf(out, "\n%-*s  %14s  %14s  %14s\n", nameWidth_, "Column", "Minimum", "Maximum",
                 "Mean");
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].kind != ColumnKind::Number) continue;
        Statistics const &values = statistics_[i];
        std::fprintf(out, "%-*s  %14.9g  %14.9g  %14.9g\n", nameWidth_, columns_[i].name.c_str(),
                     values.minimum(), values.maximum(), values.mean());
    }
}

bool Summary::has(ColumnKind kind) const {
    return std::ranges::find(columns_, kind, &Column::kind) != columns_.end();
}

void Summary::printDates(std::FILE *out) const {
    if (!has(ColumnKind::Date)) return;
    std::fprintf(out, "\n%-*s  %14s  %14s  %14s  %6s\n", nameWidth_, "Dates", "First", "Last",
                 "Days", "Gaps");
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].kind != ColumnKind::Date) continue;
        TQString const first = dateText(dates_[i].first()), last = dateText(dates_[i].last());
        std::fprintf(out, "%-*s  %14s  %14s  %14ld  %6ld\n", nameWidth_, columns_[i].name.c_str(),
                     static_cast<char const *>(first), static_cast<char const *>(last),
                     dates_[i].span(), dates_[i].gaps());
    }
}

void Summary::printTimes(std::FILE *out) const {
    if (!has(ColumnKind::Time)) return;
    std::fprintf(out, "\n%-*s  %14s  %14s\n", nameWidth_, "Times", "Earliest", "Latest");
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].kind != ColumnKind::Time) continue;
        TQString const earliest = timeText(statistics_[i].minimum());
        TQString const latest = timeText(statistics_[i].maximum());
        std::fprintf(out, "%-*s  %14s  %14s\n", nameWidth_, columns_[i].name.c_str(),
                     static_cast<char const *>(earliest), static_cast<char const *>(latest));
    }
}

// The library writes six decimals.
void Summary::printVanishing(std::FILE *out) const {
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (long const count = statistics_[i].vanishing();
            count > 0 && columns_[i].kind == ColumnKind::Number)
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
