#include "tqlib/files/TQLogfile.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "tqlib/config/getLibrarySetting.h"
#include "tqplatform/runtime/SystemCalls.h"
#include "tqplatform/streams/ofstream.h"

namespace {

constexpr int messageRoom = 4096;  // with the line end
constexpr std::size_t mostWaiting = 32 * 1024;
constexpr int levelOfChanges = 5;

using Setting = std::unique_ptr<char, decltype(&std::free)>;

Setting setting(char const *name) {
    return {getLibrarySetting(name), &std::free};
}

// The name of the log of `program`.
std::string logName(std::string_view program) {
    std::size_t const name = program.rfind('/') + 1;  // 0 without a slash
    std::size_t const dot = program.rfind('.');
    if (dot != std::string_view::npos && dot >= name) program = program.substr(0, dot);
    Setting const folder = setting("DIR");
    if (folder == nullptr) return std::string(program) + ".log";
    return folder.get() + std::string(program.substr(name)) + ".log";
}

// As atoi, for numbers of any size.
int numberIn(char const *text) {
    return static_cast<int>(std::clamp<long long>(std::strtoll(text, nullptr, 10),
                                                  std::numeric_limits<int>::min(),
                                                  std::numeric_limits<int>::max()));
}

}  // namespace

/// The file of a log and of its copies.
class TQLogfile::File {
  public:
    explicit File(std::string const &name) : stream_(name.c_str()) {}
    File(File const &) = delete;
    File &operator=(File const &) = delete;
    ~File() {
        if (started_) write("Ende des Programmes\n");
    }

    bool isOpen() const { return !stream_.fail(); }

    /// Writes the first line, once.
    void start(int level) {
        if (std::exchange(started_, true)) return;
        write("Start mit Level " + std::to_string(level) + '\n');
    }

    /// Writes a line that ends with a line end, whole or not at all. What the disk doesn't take
    /// waits in the stream, and further lines behind it.
    void write(std::string_view line) {
        if (waiting_ == 0)
            line.remove_prefix(
                tqplatform::writeFile(stream_.rdbuf()->fd(), line.data(), line.size()));
        if (!line.empty()) append(line);
    }

  private:
    void append(std::string_view line) {
        stream_.clear();
        if (waiting_ > 0 && stream_.flush()) waiting_ = 0;
        if (waiting_ + line.size() > mostWaiting) return;
        stream_.clear();
        stream_.write(line).flush();
        waiting_ = stream_.fail() ? waiting_ + line.size() : 0;
    }

    classic::ofstream stream_;
    std::size_t waiting_ = 0;  ///< characters that the disk may not have yet
    bool started_ = false;
};

TQLogfile::TQLogfile(char const *program) : tracelevel_(-1), startPending_(0) {
    if (program == nullptr) return;
    auto file = std::make_shared<File>(logName(program));
    if (!file->isOpen()) return;
    Setting const level = setting("TRACE");
    tracelevel_ = level == nullptr ? 0 : numberIn(level.get());
    startPending_ = 1;
    file_ = std::move(file);
}

TQLogfile::~TQLogfile() = default;

void TQLogfile::write(int level, char const *format, ...) {
    startPending_ = 0;
    file_->start(tracelevel_);
    if (level > tracelevel_) return;
    char message[messageRoom];
    std::va_list arguments;
    va_start(arguments, format);
    int const length = std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    if (length < 0) return;
    auto const kept = static_cast<std::size_t>(std::min(length, messageRoom - 1));
    message[kept] = '\n';
    file_->write({message, kept + 1});
}

int TQLogfile::setTracelevel(int level) {
    if (tracelevel_ < 0) return -1;
    if (level < 0) return tracelevel_;
    int const before = std::exchange(tracelevel_, level);
    printf(levelOfChanges, "TQLogfile::SetTravelevel(%d)", level);
    return before;
}
