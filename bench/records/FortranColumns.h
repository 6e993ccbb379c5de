#pragma once

#include <string>

#include "records/MeasurementTable.h"

// The procedures of columns.f90.
extern "C" {
void open_columns(char const *path, int length, int writing);
int read_columns(int *counts, double *values);
void write_columns(int const *counts, double const *values);
void close_columns();
}

/// The file of columns that the Fortran runtime has open; there is one at a time.
class FortranColumns {
  public:
    enum class Direction { in, out };

    FortranColumns(std::string const &path, Direction direction) {
        open_columns(path.data(), static_cast<int>(path.size()), direction == Direction::out);
    }
    FortranColumns(FortranColumns const &) = delete;
    FortranColumns &operator=(FortranColumns const &) = delete;
    ~FortranColumns() { close_columns(); }

    /// False at the end of the file.
    bool read(Measurement &line) { return read_columns(line.counts, line.values) == 0; }
    void write(Measurement const &line) { write_columns(line.counts, line.values); }
};
