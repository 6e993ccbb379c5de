#pragma once

#include <cstdio>
#include <cstring>

/// Reads the fields of a line with the C library: each is copied and converted.
class FieldReader {
  public:
    /// The characters of `ends`, which live as long as this object, end fields.
    FieldReader(char const *line, char const *ends) : next_(line), ends_(ends) {}

    void read(char const *format, void *number) {
        std::size_t const length = std::strcspn(next_, ends_);
        char field[200];
        std::memcpy(field, next_, length);
        field[length] = '\0';
        std::sscanf(field, format, number);
        next_ += length + 1;
    }

  private:
    char const *next_;
    char const *ends_;
};
