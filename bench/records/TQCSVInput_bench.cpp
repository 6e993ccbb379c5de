#include "tqlib/records/TQCSVInput.h"

#include <cstring>

#include "records/CsvReading.h"

namespace {

/// Reads the fields of a line with the C library: each is copied and converted.
class FieldReader {
  public:
    explicit FieldReader(char const *line) : next_(line) {}

    void read(char const *format, void *number) {
        std::size_t const length = std::strcspn(next_, ",\n");
        char field[200];
        std::memcpy(field, next_, length);
        field[length] = '\0';
        std::sscanf(field, format, number);
        next_ += length + 1;
    }

  private:
    char const *next_;
};

constexpr auto readWithSscanf = [](auto take) {
    std::FILE *const file = std::fopen(measurementFile().c_str(), "r");
    char text[1024];
    while (std::fgets(text, sizeof text, file) != nullptr) {
        Measurement line;
        FieldReader fields(text);
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
