#pragma once

// Names of files on the way from the command line to the library and the system.

#include <optional>
#include <string>

namespace messwerk {

/// `path` as the library takes it for a path of the host: with a slash in it. In a path without one
/// a backslash would separate folders.
std::string libraryPath(std::string const &path);

/// A name for the result of reading `input`, beside it: data.csv gives data-result.csv. Nothing if
/// the input is something else than an ordinary file, or has a name that the library can't take
/// apart.
std::optional<std::string> resultName(std::string const &input);

/// True if both paths lead to the same ordinary file, which need not be there yet.
bool isSameFile(std::string const &path, std::string const &other);

/// True if `path` leads to what the open descriptor `descriptor` stands for.
bool isDescriptor(std::string const &path, int descriptor);

/// True if `path` leads to an ordinary file.
bool isOrdinaryFile(std::string const &path);

}  // namespace messwerk
