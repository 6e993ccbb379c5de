#pragma once

// Lines that a Fortran program wrote, compiled with gfortran 12, by
//
//     write(10, '(A6,2X,I6,F10.3)') name, count, value
//
// and that read back as these values by the same list with the same format.

struct FortranLine {
    char const *text;
    char const *name;  ///< without the blanks behind it
    int count;
    double written, read;
};

inline constexpr FortranLine fortranLines[] = {
    {"abc         42     3.142", "abc", 42, 3.14159, 3.142},
    {"        -12345    -0.000", "", -12345, -0.0004, -0.0},
    {"Wert 1       7100000.000", "Wert 1", 7, 99999.9996, 100000},
    {"x            0-12345.678", "x", 0, -12345.6785, -12345.678},
    {"end      99999     0.500", "end", 99999, 0.5, 0.5},
};
