#include "tqlib/foundation/CStr.h"

#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "Job.h"
#include "Random.h"

namespace {

constexpr int shortest = 16, longest = 300;
constexpr int textCount = 200;

std::vector<std::string> const &texts() {
    static std::vector<std::string> const made = [] {
        Random random;
        std::vector<std::string> result;
        for (int i = 0; i < textCount; ++i)
            result.push_back(random.text(shortest, longest));
        return result;
    }();
    return made;
}

// Counting is cheap until a process has a second thread.
void runSecondThread() {
    static bool const done = (std::thread([] {}).join(), true);
    benchmark::DoNotOptimize(done);
}

constexpr auto shareString = [](auto take) {
    using Shared = std::shared_ptr<std::string const>;
    static std::vector<Shared> const shared = [] {
        std::vector<Shared> result;
        for (std::string const &text : texts())
            result.push_back(std::make_shared<std::string const>(text));
        return result;
    }();
    runSecondThread();
    for (Shared const &text : shared) {
        Shared const copy = text;
        take(copy->c_str());
    }
};

constexpr auto shareCStr = [](auto take) {
    static std::vector<CStr> const shared = [] {
        std::vector<CStr> result;
        for (std::string const &text : texts())
            result.emplace_back(text.c_str());
        return result;
    }();
    runSecondThread();
    for (CStr const &text : shared) {
        CStr const copy = text;
        take(static_cast<char const *>(copy));
    }
};

auto const sharing =
    Job<std::string>("share").peer("shared_ptr", shareString).contender("tqlib", shareCStr);

template <typename Text>
constexpr auto append = [](auto take) {
    for (std::string const &text : texts()) {
        Text joined(text.c_str());
        joined += ".csv";
        take(joined);
    }
};

/// The text of either class.
struct Appended : std::string {
    explicit Appended(std::string const &text) : std::string(text) {}
    explicit Appended(CStr const &text) : std::string(static_cast<char const *>(text)) {}
};

auto const appending = Job<Appended>("pooled append")
                           .peer("std::string", append<std::string>)
                           .contender("tqlib", append<CStr>);

constexpr auto formatWithSnprintf = [](auto take) {
    std::string text;
    for (int i = 0; i < textCount; ++i) {
        char room[400];
        std::snprintf(room, sizeof room, "%d %s %.3f", i, "Messwert", i / 7.0);
        text = room;
        take(text);
    }
};

constexpr auto formatWithTqlib = [](auto take) {
    CStr text;
    for (int i = 0; i < textCount; ++i) {
        text.Format("%d %s %.3f", i, "Messwert", i / 7.0);
        take(text);
    }
};

auto const formatting = Job<Appended>("pooled format")
                            .peer("snprintf", formatWithSnprintf)
                            .contender("tqlib", formatWithTqlib);

}  // namespace
