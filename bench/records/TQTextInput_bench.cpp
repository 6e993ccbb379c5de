#include "tqlib/records/TQTextInput.h"

#include <cstdio>

#include "Job.h"
#include "records/FieldReader.h"
#include "records/MeasurementTable.h"

namespace {

constexpr auto readWithSscanf = [](auto take) {
    std::FILE *const file = std::fopen(blankSeparatedFile().c_str(), "r");
    char text[1024];
    while (std::fgets(text, sizeof text, file) != nullptr) {
        FieldReader fields(text, " \n");
        for (int field = 0; field < 4; ++field) {
            double value = 0;
            fields.read("%lf", &value);
            take(value);
        }
    }
    std::fclose(file);
};

constexpr auto readWithTqlib = [](auto take) {
    TQTextInput file(blankSeparatedFile().c_str());
    for (file.nextline(); !file.eof(); file.nextline()) {
        for (int field = 0; field < 4; ++field) {
            double value = 0;
            file >> &value;
            take(value);
        }
    }
};

auto const reading =
    Job<double>("text read").peer("sscanf", readWithSscanf).contender("tqlib", readWithTqlib);

}  // namespace
