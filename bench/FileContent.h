#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <utility>

#include "TemporaryFile.h"

/// What a contender wrote, read back from its file.
class FileContent {
  public:
    explicit FileContent(std::string const &path) {
        std::ostringstream content;
        content << std::ifstream(path, std::ios::binary).rdbuf();
        text_ = std::move(content).str();
    }

    bool operator==(FileContent const &) const = default;

  private:
    std::string text_;
};

/// The contender that writes a file with `write`. Its result is a FileContent.
template <void (*write)(std::string const &path)>
constexpr auto writer = [](auto take) {
    std::string const path = temporaryFile("written");
    write(path);
    take(path);
};
