#include "RatioReporter.h"

#include <algorithm>
#include <cstdio>

#include "Targets.h"

namespace {

constexpr char lineFormat[] = "%-26s %-20s %10s %10s %8s %8s %10s\n";

std::string formatNumber(char const *format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string formatTime(double seconds) {
    if (seconds < 1e-6) return formatNumber("%.1f ns", seconds * 1e9);
    if (seconds < 1e-3) return formatNumber("%.1f us", seconds * 1e6);
    return formatNumber("%.1f ms", seconds * 1e3);
}

std::string formatLine(char const *job, char const *peer, std::vector<std::string> const &cells) {
    char line[160];
    std::snprintf(line, sizeof line, lineFormat, job, peer, cells[0].c_str(), cells[1].c_str(),
                  cells[2].c_str(), cells[3].c_str(), cells[4].c_str());
    return line;
}

std::string formatLine(Target const &target, double own, double peer) {
    bool const measured = own > 0 && peer > 0;
    std::string const none = "-";
    return formatLine(target.job, target.peer,
                      {own > 0 ? formatTime(own) : none, peer > 0 ? formatTime(peer) : none,
                       measured ? formatNumber("%.4f", own / peer) : "not run",
                       formatNumber("%.3f", target.atMost),
                       target.bestSeen > 0 ? formatNumber("%.3f", target.bestSeen) : none});
}

// For one round of the job, by the clock that it is to be measured with.
double secondsOf(benchmark::BenchmarkReporter::Run const &run) {
    bool const onTheWall = run.run_name.time_type == "real_time";
    double const all = onTheWall ? run.real_accumulated_time : run.cpu_accumulated_time;
    return all / static_cast<double>(run.iterations);
}

}  // namespace

bool RatioReporter::ReportContext(Context const &context) {
    PrintBasicContext(&GetErrorStream(), context);
    return true;
}

void RatioReporter::ReportRuns(std::vector<Run> const &runs) {
    for (Run const &run : runs)
        if (run.run_type == Run::RT_Iteration)
            seconds_[run.run_name.function_name].push_back(secondsOf(run));
}

// 0 for a benchmark that wasn't run.
double RatioReporter::median(std::string const &benchmark) const {
    auto const found = seconds_.find(benchmark);
    if (found == seconds_.end()) return 0;
    std::vector<double> times = found->second;
    auto const middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

void RatioReporter::Finalize() {
    GetOutputStream() << formatLine("job", "peer",
                                    {"tqlib", "peer's", "ratio", "at most", "best seen"});
    for (Target const &target : targets) {
        std::string const job = target.job;
        double const own = median(job + "/tqlib"), peer = median(job + '/' + target.peer);
        if (own > 0 || peer > 0) GetOutputStream() << formatLine(target, own, peer);
    }
}
