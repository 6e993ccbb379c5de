#include "tqlib/foundation/ScanNumber.h"

#include <langinfo.h>

#include <cstdio>

namespace tqlib::detail {
namespace {

template <typename Number>
int scan(char const *text, char const *format, Number &value) {
    char const *start = text;
    while (isWhiteSpace(*start))
        ++start;
    if (readPlainNumber(start, decimalPoint(), value) != nullptr) return 1;
    return std::sscanf(text, format, &value);
}

}  // namespace

char decimalPoint() {
    char const *const point = nl_langinfo(RADIXCHAR);
    return point[0] != '\0' && point[1] == '\0' ? point[0] : '\0';
}

char decimalPointByte() {
    return *nl_langinfo(RADIXCHAR);
}

int scanNumber(char const *text, double &value) {
    return scan(text, "%lf", value);
}
int scanNumber(char const *text, float &value) {
    return scan(text, "%f", value);
}
int scanNumber(char const *text, long &value) {
    return scan(text, "%ld", value);
}
int scanNumber(char const *text, int &value) {
    return scan(text, "%d", value);
}
int scanNumber(char const *text, unsigned long &value) {
    return scan(text, "%lu", value);
}
int scanNumber(char const *text, unsigned int &value) {
    return scan(text, "%u", value);
}

}  // namespace tqlib::detail
