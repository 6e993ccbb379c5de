#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

/// A fresh folder, removed with all that is in it.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tqlib.XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) std::abort();
        path_ = name;
    }
    TemporaryFolder(TemporaryFolder const &) = delete;
    TemporaryFolder &operator=(TemporaryFolder const &) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    /// The path of the file `name` in the folder.
    std::string file(std::string const &name) const { return (path_ / name).string(); }

    /// Makes the file `name` with `content` and gives its path.
    std::string write(std::string const &name, std::string const &content) const {
        std::ofstream(file(name), std::ios::binary) << content;
        return file(name);
    }

    std::string read(std::string const &name) const {
        std::ostringstream content;
        content << std::ifstream(file(name), std::ios::binary).rdbuf();
        return content.str();
    }

  private:
    std::filesystem::path path_;
};
