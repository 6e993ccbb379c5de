// Numbers from text against the C runtime. The first byte of an input is a comma for a locale with
// a decimal comma; the rest is the text.

#include "tqlib/foundation/ScanNumber.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "support/Check.h"
#include "support/Input.h"
#include "support/NumberLocale.h"

namespace {

template <typename Number>
void agreesWithTheRuntime(char const *text, char const *format) {
    Number library{7}, model{7};
    int const libraryResult = tqlib::detail::scanNumber(text, library);
    int const modelResult = std::sscanf(text, format, &model);
    expectSame(format, libraryResult, modelResult);
    expectSame(format, library, model);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    NumberLocale const locale(input.take() == ',');
    std::string const rest = input.rest();
    // A block of exactly this size, so that a read beyond the text is seen.
    std::vector<char> const text(rest.c_str(), rest.c_str() + std::strlen(rest.c_str()) + 1);
    agreesWithTheRuntime<double>(text.data(), "%lf");
    agreesWithTheRuntime<float>(text.data(), "%f");
    agreesWithTheRuntime<long>(text.data(), "%ld");
    agreesWithTheRuntime<int>(text.data(), "%d");
    agreesWithTheRuntime<unsigned long>(text.data(), "%lu");
    agreesWithTheRuntime<unsigned int>(text.data(), "%u");
    return 0;
}
