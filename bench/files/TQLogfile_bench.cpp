#include "tqlib/files/TQLogfile.h"

#include <fcntl.h>
#include <unistd.h>

#include <string>

#include "Job.h"
#include "TemporaryFile.h"

namespace {

constexpr int lineCount = 1000;

std::string const line(80, 'x');

// A fresh file with 1000 lines.

constexpr auto writeReadyLines = [](auto take) {
    static std::string const path = temporaryFile("ready.log"), ready = line + '\n';
    int const file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    for (int i = 0; i < lineCount; ++i)
        take(write(file, ready.data(), ready.size()) == 81);
    close(file);
};

constexpr auto logLines = [](auto take) {
    static std::string const path = temporaryFile("written.log");
    TQLogfile log(path.c_str());
    for (int i = 0; i < lineCount; ++i)
        take(log.printf(0, "%s", line.c_str()) == 0);
};

auto const logging =
    Job<bool>("log line").peer("write", writeReadyLines).contender("tqlib", logLines);

}  // namespace
