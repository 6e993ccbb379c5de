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

using tqlib::detail::BlockwiseDigits;

/// A text in a block of exactly its size, so that a read beyond it is seen, and in one with the
/// bytes behind it that reading by blocks may look at.
struct Texts {
    explicit Texts(std::string const &text)
        : exact(text.c_str(), text.c_str() + std::strlen(text.c_str()) + 1), padded(exact) {
        padded.resize(exact.size() + BlockwiseDigits::padding, '9');
    }

    std::vector<char> exact;
    std::vector<char> padded;
};

template <typename Number>
void agreesWithTheRuntime(Texts const &texts, char const *format) {
    Number library{7}, model{7};
    int const libraryResult = tqlib::detail::scanNumber(texts.exact.data(), library);
    int const modelResult = std::sscanf(texts.exact.data(), format, &model);
    expectSame(format, libraryResult, modelResult);
    expectSame(format, library, model);

    char const *start = texts.padded.data();
    while (tqlib::detail::isWhiteSpace(*start))
        ++start;
    char const point = tqlib::detail::decimalPoint();
    if (tqlib::detail::readPlainNumber<BlockwiseDigits>(start, point, library) == nullptr) return;
    expectSame(format, 1, modelResult);
    expectSame(format, library, model);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    NumberLocale const locale(input.take() == ',');
    Texts const texts(input.rest());
    agreesWithTheRuntime<double>(texts, "%lf");
    agreesWithTheRuntime<float>(texts, "%f");
    agreesWithTheRuntime<long>(texts, "%ld");
    agreesWithTheRuntime<int>(texts, "%d");
    agreesWithTheRuntime<unsigned long>(texts, "%lu");
    agreesWithTheRuntime<unsigned int>(texts, "%u");
    return 0;
}
