#pragma once

// A command line as an array of words, out of which an application takes its options until only the
// plain arguments are left.
//
//     TQArgv arguments("draw -v -o plot.bmp co2.csv");
//     int const loud = arguments.checkOption("-v");        // 1
//     char *output = nullptr;
//     arguments.checkOption("-o", &output);                // plot.bmp
//     arguments[1];                                        // co2.csv, and count() is 1
//
// Words are what white space separates. Quotes mean nothing: a quoted path with a blank in it is
// two words, with the quotes in them.

#include <vector>

#include "tqlib/foundation/Export.h"

/// The words, with the path of the running program in entry 0. The texts of the entries belong to
/// the object and live as long as it does, also those of options that were taken out. The caller
/// may write to them, within their length.
class TQLIB_API TQArgv {
  public:
    /// The command line of this process: the words go to the entries from 1 on, so that the program
    /// as it was typed is entry 1.
    TQArgv();

    /// The words of `commandLine` go to the entries from 0 on, so that the first one makes way for
    /// the program's path. Null counts as empty.
    TQArgv(char const *commandLine);

    /// Copies have texts of their own.
    TQArgv(TQArgv const &other);
    TQArgv &operator=(TQArgv const &other);
    ~TQArgv();

    /// The highest valid index: one less than the number of entries.
    int count() const { return static_cast<int>(argv_.size()) - 1; }

    /// The entry `index`, or null below 0 and above count().
    char *operator[](int index) const;

    /// Takes out the first entry from 1 on that equals `option`, capitals and all. The result is 1,
    /// or 0 if there is none. A null option equals nothing.
    int checkOption(char const *option);

    /// Takes out the option together with the entry behind it, whatever that looks like, which is
    /// the option's value. An option in last place has an empty one. If the option isn't found
    /// `value` is left alone; it may be null.
    int checkOption(char const *option, char **value);

  private:
    using Entry = std::vector<char *>::iterator;

    TQLIB_INTERNAL void set(char const *commandLine);
    TQLIB_INTERNAL Entry find(char const *option);

    std::vector<char *> argv_;   ///< program_, then words in text_
    std::vector<char> text_;     ///< the command line, a NUL in place of each white space
    std::vector<char> program_;  ///< the program's path
};
