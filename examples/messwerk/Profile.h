#pragma once

// A profile: a file of settings that describes a run and remembers the last one.
//
//     [Input]
//     File=co2.csv
//     Separator=,
//     Columns=date:iso,CO2
//     [Calculations]
//     above=CO2 315 -
//     [Limits]
//     CO2=300:450
//     [Output]
//     File=co2-result.csv

#include <optional>
#include <string>
#include <vector>

#include "tqlib/tqlib.h"

namespace messwerk {

/// A value of a category, as it stands in the file.
struct Entry {
    std::string name;
    std::string value;
};

/// True if `path` is the name of a profile: its extension is .ini.
bool isProfile(std::string const &path);

class Profile {
  public:
    /// Opens the profile `path`. Throws RunError if it can't be read.
    explicit Profile(std::string const &path);

    /// Throws UsageError if a line is too long to be read.
    void check() const;

    /// The value `name` of `category`; nothing if there is none.
    std::optional<std::string> value(char const *category, char const *name);

    /// The lines of `category` that hold values, from top to bottom, without comments.
    std::vector<std::string> lines(char const *category);

    /// The same, taken apart.
    std::vector<Entry> entries(char const *category);

    /// Gives the value `name` of `category` another text, or takes it away for an empty one; makes
    /// the category if there is none. Throws RunError if the profile can't be written, which has
    /// the old text then, or the last one of several, UsageError as checkRoom() does.
    void set(char const *category, std::string const &name, std::string const &value);

    /// Throws UsageError if the line of such a value would be too long.
    static void checkRoom(std::string const &name, std::string const &value);

    /// The same for a value File, also if it leads nowhere.
    static void checkFile(std::string const &name);

    /// The path of the file that the value File of `category` names, counted from the profile's
    /// folder; empty if there is none. Throws UsageError for a name that leads nowhere.
    std::string file(char const *category);

    /// Puts down the run of this moment: its time, its rows, and the version of the program. Throws
    /// RunError if the profile can't be written, which is as it was then, or has a part of it.
    void rememberRun(long rows, long refused);

  private:
    bool put(char const *category, std::string const &name, std::string const &value);

    std::string path_;
    TQConfiguration file_;
};

}  // namespace messwerk
