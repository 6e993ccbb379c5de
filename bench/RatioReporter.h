#pragma once

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <vector>

/// Prints, after all benchmarks, one table of the jobs: the median times of tqlib and of the peer,
/// their ratio, and what the ratio should be. It doesn't judge: one noisy run proves nothing.
///
/// Times are processor time of the measuring thread, into which other programs don't run. A thread
/// that a peer starts beside it isn't counted, to the peer's advantage.
class RatioReporter : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(Context const &context) override;
    void ReportRuns(std::vector<Run> const &runs) override;
    void Finalize() override;

  private:
    double median(std::string const &benchmark) const;

    std::map<std::string, std::vector<double>> seconds_;  ///< by name, one for each repetition
};
