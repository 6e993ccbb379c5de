#include <libfccp/csv.h>

#include "Nearly.h"
#include "records/CsvReading.h"

namespace {

constexpr auto readWithFastCppCsvParser = [](auto take) {
    io::CSVReader<8> file(measurementFile());
    file.set_header("a", "b", "c", "d", "e", "f", "g", "h");
    Measurement line;
    auto &[counts, values] = line;
    while (file.read_row(counts[0], counts[1], counts[2], counts[3], values[0], values[1],
                         values[2], values[3]))
        take(line);
};

// This peer rounds at every decimal.
constexpr auto nearlySame = [](Measurement const &a, Measurement const &b) {
    return std::ranges::equal(a.counts, b.counts) && std::ranges::equal(a.values, b.values, nearly);
};

auto const &reading =
    csvReading.contender("fast-cpp-csv-parser", readWithFastCppCsvParser, nearlySame);

}  // namespace
