#pragma once

#include <string>

/// The path of the file `name` in a folder of this run, in memory where the system has /dev/shm.
/// The folder is removed at the end of the program.
std::string temporaryFile(std::string const &name);
