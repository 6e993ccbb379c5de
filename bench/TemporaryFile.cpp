#include "TemporaryFile.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace {

class TemporaryFolder {
  public:
    TemporaryFolder()
        : path_(std::filesystem::is_directory("/dev/shm") ? "/dev/shm/tqlib_bench.XXXXXX"
                                                          : "/tmp/tqlib_bench.XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr)
            throw std::system_error(errno, std::generic_category(), path_);
    }
    TemporaryFolder(TemporaryFolder const &) = delete;
    TemporaryFolder &operator=(TemporaryFolder const &) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string const &path() const { return path_; }

  private:
    std::string path_;
};

}  // namespace

std::string temporaryFile(std::string const &name) {
    static TemporaryFolder const folder;
    return folder.path() + '/' + name;
}
