#include "tqlib/records/TQFortranInput.h"

#include "Job.h"
#include "records/FortranColumns.h"
#include "records/MeasurementTable.h"

namespace {

constexpr auto readWithFortran = [](auto take) {
    FortranColumns file(columnFile(), FortranColumns::Direction::in);
    for (Measurement line; file.read(line);)
        take(line);
};

constexpr auto readWithTqlib = [](auto take) {
    TQFortranInput file(columnFile().c_str());
    for (; file.peek() >= 0; file.NL()) {
        Measurement line;
        for (int &count : line.counts)
            file.I(10, count);
        for (double &value : line.values)
            file.F(10, 3, value);
        take(line);
    }
};

auto const reading = Job<Measurement>("columns read")
                         .peer("gfortran", readWithFortran)
                         .contender("tqlib", readWithTqlib);

}  // namespace
