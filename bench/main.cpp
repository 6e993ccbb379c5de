#include <benchmark/benchmark.h>
#include <vector>

#include "RatioReporter.h"

namespace {

// Rounds in random order, so that a slow moment of the machine hits every contender alike. They
// stand before the arguments of the command line, which win.
char interleaved[] = "--benchmark_enable_random_interleaving=true";
char rounds[] = "--benchmark_repetitions=9";
char secondsOfRound[] = "--benchmark_min_time=0.2";

}  // namespace

int main(int argc, char **argv) {
    std::vector<char *> arguments = {argv[0], interleaved, rounds, secondsOfRound};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
}
