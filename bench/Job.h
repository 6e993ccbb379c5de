#pragma once

// A job that tqlib and its peers do side by side, on the same input and with the same results.
//
//     Job<int> const doubling = Job<int>("double")
//                                   .peer("shift", [](auto take) { take(21 << 1); })
//                                   .contender("tqlib", [](auto take) { take(2 * 21); });
//
// registers the benchmarks double/shift and double/tqlib. A contender is a generic function that
// does the whole job once and hands each result to `take`. While it is measured the results are
// dropped; before that they are gathered once and compared with those of the reference.

#include <benchmark/benchmark.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// `Result` is built from whatever the contenders hand over. Copies of a job are the same job.
template <typename Result>
class Job {
  public:
    explicit Job(std::string name)
        : name_(std::move(name)), reference_(std::make_shared<Reference>()) {}

    /// Lets the contenders that are added from now on be measured by the clock on the wall, instead
    /// of by the processor's time: for jobs that wait for another process.
    Job &onTheWall() {
        waits_ = true;
        return *this;
    }

    /// Sets what the results have to be, without measuring it. Runs at most once, when the first
    /// contender is about to be measured.
    template <typename Run>
    Job &reference(Run run) {
        reference_->run = [run] { return resultsOf(run); };
        return *this;
    }

    /// Adds a contender whose results are the reference.
    template <typename Run>
    Job &peer(std::string const &name, Run run) {
        reference(run);
        return measure(name_ + '/' + name, run, [] {});
    }

    /// Adds a contender whose results must be the `same` as those of the reference: if they aren't
    /// the program ends with status 1.
    template <typename Run, typename Same = std::equal_to<>>
    Job &contender(std::string const &name, Run run, Same same = {}) {
        std::string const title = name_ + '/' + name;
        return measure(title, run, [title, run, same, reference = reference_] {
            check(title, resultsOf(run), reference->results(), same);
        });
    }

  private:
    using Results = std::vector<Result>;

    struct Reference {
        std::function<Results()> run;
        Results known;

        Results const &results() {
            if (known.empty()) known = run();
            return known;
        }
    };

    template <typename Run>
    static Results resultsOf(Run run) {
        Results results;
        run([&](auto const &result) { results.emplace_back(result); });
        return results;
    }

    template <typename Same>
    static void check(std::string const &title, Results const &own, Results const &expected,
                      Same same) {
        auto const place =
            std::mismatch(own.begin(), own.end(), expected.begin(), expected.end(), same);
        if (!own.empty() && place.first == own.end() && place.second == expected.end()) return;
        std::fprintf(stderr, "%s: wrong from result %td of %zu on\n", title.c_str(),
                     place.second - expected.begin(), expected.size());
        std::exit(1);
    }

    template <typename Run, typename Check>
    Job &measure(std::string const &title, Run run, Check check) {
        auto const runOnce = [run] {
            run([](auto const &result) { benchmark::DoNotOptimize(result); });
        };
        auto const body = [runOnce, check, first = true](benchmark::State &state) mutable {
            if (std::exchange(first, false)) {
                check();
                runOnce();  // makes the input, which isn't to be measured
            }
            for (auto _ : state)
                runOnce();
        };
        auto *const registered = benchmark::RegisterBenchmark(title.c_str(), body);
        if (waits_) registered->UseRealTime();
        return *this;
    }

    std::string name_;
    bool waits_ = false;
    std::shared_ptr<Reference> reference_;
};
