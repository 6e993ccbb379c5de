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

std::string writeMeasurements() {
    std::string path = temporaryFile("measurements.csv");
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> const file(std::fopen(path.c_str(), "w"),
                                                                &std::fclose);
    if (file == nullptr) throw std::runtime_error("can't write " + path);
    for (auto const &[counts, values] : measurements())
        std::fprintf(file.get(), "%d,%d,%d,%d,%lf,%lf,%lf,%lf\n", counts[0], counts[1], counts[2],
                     counts[3], values[0], values[1], values[2], values[3]);
    return path;
}

}  // namespace

std::vector<Measurement> const &measurements() {
    static std::vector<Measurement> const lines = makeMeasurements();
    return lines;
}

std::string const &measurementFile() {
    static std::string const path = writeMeasurements();
    return path;
}
