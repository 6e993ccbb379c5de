#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <memory>

#include "Job.h"
#include "TemporaryFile.h"
#include "tqlib/files/TQLogfile.h"

namespace {

constexpr int callCount = 1000;
constexpr char text[] = "C:\\data\\co2.csv";

// Messages beyond the level of the log, which aren't written.

constexpr auto callSpdlog = [](auto take) {
    static spdlog::logger log(
        "bench", std::make_shared<spdlog::sinks::basic_file_sink_mt>(temporaryFile("spdlog.log")));
    for (int i = 0; i < callCount; ++i) {
        log.debug("row {}: {}", i, text);
        take(i);
    }
};

constexpr auto callTqlib = [](auto take) {
    static TQLogfile log(temporaryFile("suppressed.log").c_str());
    for (int i = 0; i < callCount; ++i) {
        log.printf(3, "row %d: %s", i, text);
        take(i);
    }
};

auto const suppressing =
    Job<int>("suppressed call").peer("spdlog", callSpdlog).contender("tqlib", callTqlib);

}  // namespace
