#pragma once

// The command line of this process, the name of its program, and command lines for child processes.
//
//     splitCommandLine("copy \"C:\\my data\\a.csv\" b.csv")     // copy, C:\my data\a.csv, b.csv
//     joinCommandLine({"copy", "C:\\my data\\a.csv", "b.csv"})   // the text above
//
// In a command line blanks and tabs separate the words. A double quote begins or ends a part in
// which they don't, and stands anywhere in a word; one that isn't closed lasts to the end.
// Backslashes are ordinary characters unless a quote follows: 2n of them give n there and leave the
// quote its meaning, 2n + 1 give n and a quote that is part of the word.

#include <string>
#include <string_view>
#include <vector>

#include "tqplatform/kernel/Module.h"
#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// The words of `commandLine`.
TQPLATFORM_API std::vector<std::string> splitCommandLine(std::string_view commandLine);

/// The command line that splitCommandLine() turns into `words` again. Only words with white space
/// or quotes and empty ones are put in quotes.
TQPLATFORM_API std::string joinCommandLine(std::vector<std::string> const &words);

}  // namespace tqplatform

/// The command line with which this process was started, the program's word first, as
/// joinCommandLine() makes it of the words. The text is made at the first call and stays. It is
/// empty if the system doesn't tell.
TQPLATFORM_API char const *GetCommandLineA();

/// Copies the file name of `module`, or for null the path of this process's program with its drive,
/// to `buffer`, cut to `size` bytes with the NUL. The result is the number of characters without
/// the NUL, or `size` if the name was cut. It is 0, with an empty text, if the system doesn't tell
/// the name, and with a null buffer or the size 0 nothing is written.
TQPLATFORM_API unsigned int GetModuleFileNameA(HINSTANCE module, char *buffer, unsigned int size);
