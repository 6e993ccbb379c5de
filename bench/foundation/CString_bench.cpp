#include "tqplatform/framework/CString.h"

#include "Job.h"
#include "Random.h"
#include "tqlib/foundation/TQString.h"

namespace {

std::string const &kilobyte() {
    static std::string const text = Random().text(1024, 1024);
    return text;
}

template <typename Text>
constexpr auto append = [](auto take) {
    Text text;
    for (char const c : kilobyte())
        text += c;
    take(text);
};

auto const appending = Job<std::string>("append")
                           .peer("std::string", append<std::string>)
                           .contender("tqlib", append<TQString>);

template <typename Text>
struct Parts {
    Text a, b, c;
};

template <typename Text>
std::vector<Parts<Text>> makeParts() {
    Random random;
    auto const part = [&] { return Text(random.text(8, 40).c_str()); };
    std::vector<Parts<Text>> parts;
    for (int i = 0; i < 1000; ++i)
        parts.push_back({part(), part(), part()});
    return parts;
}

template <typename Text>
constexpr auto join = [](auto take) {
    static std::vector<Parts<Text>> const parts = makeParts<Text>();
    for (auto const &[a, b, c] : parts) {
        Text const joined = a + b + c;
        take(joined);
    }
};

auto const joining = Job<std::string>("join")
                         .peer("std::string", join<std::string>)
                         .contender("tqlib", join<TQString>);

}  // namespace
