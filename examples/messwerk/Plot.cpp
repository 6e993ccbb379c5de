#include "Plot.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Axis.h"
#include "Canvas.h"
#include "Errors.h"
#include "Paths.h"
#include "SafeFile.h"
#include "tqplatform/runtime/CodePage1252.h"
#include "Words.h"

namespace messwerk {
namespace {

constexpr int pictureWidth = 960, pictureHeight = 540;
constexpr double left = 84, right = 32, top = 64, bottom = 52;
constexpr double titleSize = 15, labelSize = 9;
constexpr double lineThickness = 1.6, gridThickness = 1, markLength = 5;

std::size_t findColumn(std::string const &name, std::vector<Column> const &columns) {
    auto const found = std::ranges::find(
        columns, toCapitals(name), [](Column const &column) { return toCapitals(column.name); });
    if (found == columns.end() || !hasNumber(found->kind))
        throw UsageError("the plot needs a column of numbers, dates or times, not " + quoted(name));
    return static_cast<std::size_t>(found - columns.begin());
}

/// The part of the canvas between the axes.
struct Frame {
    Range across, up;

    Point place(double x, double y) const {
        return {left + across.part(x) * (pictureWidth - left - right),
                pictureHeight - bottom - up.part(y) * (pictureHeight - top - bottom)};
    }
};

void drawAcross(Canvas &canvas, Frame const &frame, std::vector<Mark> const &marks,
                std::string const &name) {
    for (Mark const &mark : marks) {
        Point const foot = frame.place(mark.value, frame.up.lowest);
        Point const head = frame.place(mark.value, frame.up.highest);
        canvas.line(foot, head, Ink::Grid, gridThickness);
        canvas.line(foot, {foot.x, foot.y + markLength}, Ink::Text, gridThickness);
        double const width = Canvas::textWidth(mark.label, labelSize);
        canvas.text({foot.x - width / 2, foot.y + 10}, mark.label, labelSize, Ink::Text);
    }
    double const width = Canvas::textWidth(name, labelSize);
    canvas.text({pictureWidth - right - width, pictureHeight - 18}, name, labelSize, Ink::Text);
}

void drawUp(Canvas &canvas, Frame const &frame, std::vector<Mark> const &marks) {
    for (Mark const &mark : marks) {
        Point const begin = frame.place(frame.across.lowest, mark.value);
        Point const end = frame.place(frame.across.highest, mark.value);
        canvas.line(begin, end, Ink::Grid, gridThickness);
        canvas.line({begin.x - markLength, begin.y}, begin, Ink::Text, gridThickness);
        double const width = Canvas::textWidth(mark.label, labelSize);
        canvas.text({begin.x - 9 - width, begin.y - labelSize / 2}, mark.label, labelSize,
                    Ink::Text);
    }
}

void drawAxes(Canvas &canvas, Frame const &frame) {
    Point const corner = frame.place(frame.across.lowest, frame.up.lowest);
    canvas.line(corner, frame.place(frame.across.highest, frame.up.lowest), Ink::Text, 1.2);
    canvas.line(corner, frame.place(frame.across.lowest, frame.up.highest), Ink::Text, 1.2);
}

Range rangeOfValues(std::vector<double> const &values, Range range) {
    for (double const value : values)
        range = {std::min(range.lowest, value), std::max(range.highest, value)};
    return range;
}

// A step back begins a new line.
void drawSeries(Canvas &canvas, Frame const &frame, std::vector<double> const &across,
                std::vector<double> const &up, Ink ink) {
    for (std::size_t row = 1; row < across.size(); ++row)
        if (across[row] >= across[row - 1])
            canvas.line(frame.place(across[row - 1], up[row - 1]),
                        frame.place(across[row], up[row]), ink, lineThickness);
}

constexpr Range nothing{std::numeric_limits<double>::infinity(),
                        -std::numeric_limits<double>::infinity()};

/// The range that a plot shows for values of that range, with a part of it as room at either end.
Range shown(Range const &values, double room) {
    if (values.lowest > values.highest) return {0, 1};
    auto const [lowest, highest] = rangeOf(values.lowest, values.highest);
    return {lowest - room * (highest - lowest), highest + room * (highest - lowest)};
}

}  // namespace

void checkPlot(PlotOptions const &plot, std::vector<Column> const &columns) {
    if (plot.file.empty()) return;
    if (plot.columns.empty()) throw UsageError("which columns are to be plotted?");
    if (plot.columns.size() > mostSeries)
        throw UsageError("a plot has at most " + std::to_string(mostSeries) + " columns");
    findColumn(plot.across, columns);
    for (std::string const &name : plot.columns)
        findColumn(name, columns);
}

Plot::Plot(Options const &options) : options_(options.plot) {
    if (options_.file.empty()) return;
    std::vector<Column> const columns = resultColumns(options);
    auto const series = [&](std::string const &name) {
        std::size_t const column = findColumn(name, columns);
        return Series{column, tqplatform::fromUtf8(columns[column].name), {}};
    };
    across_ = series(options_.across);
    acrossIsDate_ = columns[across_.column].kind == ColumnKind::Date;
    for (std::string const &name : options_.columns)
        up_.push_back(series(name));
}

void Plot::add(Row const &row) {
    if (options_.file.empty()) return;
    across_.values.push_back(row[across_.column].number);
    for (Series &series : up_)
        series.values.push_back(row[series.column].number);
}

void Plot::drawLegend(Canvas &canvas) const {
    constexpr double y = 47, sample = 22, gap = 7, between = 24;
    double x = left;
    for (std::size_t index = 0; index < up_.size(); ++index) {
        std::string const &name = up_[index].name;
        canvas.line({x, y}, {x + sample, y}, inkOf(index), 2.4);
        x += sample + gap;
        canvas.text({x, y - labelSize / 2}, name, labelSize, Ink::Text);
        x += Canvas::textWidth(name, labelSize) + between;
    }
}

void Plot::finish() const {
    if (options_.file.empty()) return;
    Range values = nothing;
    for (Series const &series : up_)
        values = rangeOfValues(series.values, values);
    Frame const frame{shown(rangeOfValues(across_.values, nothing), 0), shown(values, 0.04)};

    Canvas canvas(pictureWidth, pictureHeight);
    drawAcross(canvas, frame, (acrossIsDate_ ? dateMarks : numberMarks)(frame.across, 9),
               across_.name);
    drawUp(canvas, frame, numberMarks(frame.up, 7));
    drawAxes(canvas, frame);
    for (std::size_t index = 0; index < up_.size(); ++index)
        drawSeries(canvas, frame, across_.values, up_[index].values, inkOf(index));

    canvas.text({left, 16}, tqplatform::fromUtf8(options_.title), titleSize, Ink::Text);
    drawLegend(canvas);

    SafeFile target(options_.file);
    if (!canvas.write(libraryPath(target.workPath()).c_str()))  // the library has told the user why
        throw RunError("can't write " + quotedPath(options_.file));
    target.keep();
}

}  // namespace messwerk
