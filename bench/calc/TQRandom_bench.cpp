#include "tqlib/calc/TQRandom.h"

#include <absl/random/random.h>

#include "Job.h"

namespace {

constexpr int count = 100000;

/// A number that is within the bounds, whichever it is.
struct Within {
    explicit Within(double number) : fits(number >= -1 && number <= 5) {}
    bool operator==(Within const &) const = default;
    bool fits;
};

constexpr auto drawWithAbsl = [](auto take) {
    absl::InsecureBitGen generator;
    for (int i = 0; i < count; ++i)
        take(absl::Uniform(generator, -1.0, 5.0));
};

constexpr auto drawWithTqlib = [](auto take) {
    TQRandom random(5.0);
    random.minimum(-1.0);
    for (int i = 0; i < count; ++i)
        take(random.random());
};

auto const drawing =
    Job<Within>("random").peer("absl::Uniform", drawWithAbsl).contender("tqlib", drawWithTqlib);

}  // namespace
