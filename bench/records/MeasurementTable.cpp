#include "records/MeasurementTable.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include "Random.h"
#include "TemporaryFile.h"

namespace {

constexpr int lineCount = 400000;
constexpr int millionth = 1000000;

std::vector<Measurement> makeMeasurements() {
    Random random;
    std::vector<Measurement> lines(lineCount);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        for (int &count : lines[i].counts)
            count = random.between(-1000000, 1000000);
        for (double &value : lines[i].values) {
            auto millionths = random.between<std::int64_t>(-10000000000, 10000000000);
            if (i % 10 == 0) millionths -= millionths % millionth;
            value = static_cast<double>(millionths) / millionth;
        }
    }
    return lines;
}

// Makes the file `name`, with what `print` writes for each line of the table.
template <typename Print>
std::string writeLines(char const *name, Print print) {
    std::string path = temporaryFile(name);
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> const file(std::fopen(path.c_str(), "w"),
                                                                &std::fclose);
    if (file == nullptr) throw std::runtime_error("can't write " + path);
    for (Measurement const &line : measurements())
        print(file.get(), line.counts, line.values);
    return path;
}

void printSeparated(std::FILE *file, int const (&counts)[4], double const (&values)[4]) {
    std::fprintf(file, "%d,%d,%d,%d,%lf,%lf,%lf,%lf\n", counts[0], counts[1], counts[2], counts[3],
                 values[0], values[1], values[2], values[3]);
}

void printColumns(std::FILE *file, int const (&counts)[4], double const (&values)[4]) {
    std::fprintf(file, "%10d%10d%10d%10d%10.3f%10.3f%10.3f%10.3f\n", counts[0], counts[1],
                 counts[2], counts[3], values[0], values[1], values[2], values[3]);
}

void printValues(std::FILE *file, int const (&/*counts*/)[4], double const (&values)[4]) {
    std::fprintf(file, "%lf %lf %lf %lf\n", values[0], values[1], values[2], values[3]);
}

}  // namespace

std::vector<Measurement> const &measurements() {
    static std::vector<Measurement> const lines = makeMeasurements();
    return lines;
}

std::string const &measurementFile() {
    static std::string const path = writeLines("measurements.csv", printSeparated);
    return path;
}

std::string const &columnFile() {
    static std::string const path = writeLines("measurements.columns", printColumns);
    return path;
}

std::string const &blankSeparatedFile() {
    static std::string const path = writeLines("measurements.txt", printValues);
    return path;
}
