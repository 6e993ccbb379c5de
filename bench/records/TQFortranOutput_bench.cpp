#include "tqlib/records/TQFortranOutput.h"

#include <cstdio>
#include <string>

#include "FileContent.h"
#include "Job.h"
#include "records/FortranColumns.h"
#include "records/MeasurementTable.h"

namespace {

void writeWithPrintf(std::string const &path) {
    std::FILE *const file = std::fopen(path.c_str(), "w");
    for (Measurement const &line : measurements()) {
        for (int const count : line.counts)
            std::fprintf(file, "%10d", count);
        for (double const value : line.values)
            std::fprintf(file, "%10.3f", value);
        std::fputc('\n', file);
    }
    std::fclose(file);
}

void writeWithFortran(std::string const &path) {
    FortranColumns file(path, FortranColumns::Direction::out);
    for (Measurement const &line : measurements())
        file.write(line);
}

void writeWithTqlib(std::string const &path) {
    TQFortranOutput file(path.c_str());
    for (Measurement const &line : measurements()) {
        for (int const count : line.counts)
            file.I(10, count);
        for (double const value : line.values)
            file.F(10, 3, value);
        file.NL();
    }
}

auto const writing = Job<FileContent>("columns write")
                         .reference(writer<writeWithPrintf>)
                         .contender("gfortran", writer<writeWithFortran>)
                         .contender("tqlib", writer<writeWithTqlib>);

}  // namespace
