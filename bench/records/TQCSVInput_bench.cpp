#include "tqlib/records/TQCSVInput.h"

#include <cstdio>

#include "records/CsvReading.h"
#include "records/FieldReader.h"

namespace {

constexpr auto readWithSscanf = [](auto take) {
    std::FILE *const file = std::fopen(measurementFile().c_str(), "r");
    char text[1024];
    while (std::fgets(text, sizeof text, file) != nullptr) {
        Measurement line;
        FieldReader fields(text, ",\n");
        for (int &count : line.counts)
            fields.read("%d", &count);
        for (double &value : line.values)
            fields.read("%lf", &value);
        take(line);
    }
    std::fclose(file);
};

constexpr auto readWithTqlib = [](auto take) {
    TQCSVInput file(measurementFile().c_str(), 0, 1, 0, ',');
    for (file.nextline(); !file.eof(); file.nextline()) {
        Measurement line;
        for (int &count : line.counts)
            file >> &count;
        for (double &value : line.values)
            file >> &value;
        take(line);
    }
};

auto const &reading = csvReading.peer("sscanf", readWithSscanf).contender("tqlib", readWithTqlib);

}  // namespace
