#pragma once

// A text file of settings: values under categories.
//
//     [Messung]
//     Kanal=3
//     Geraet=C:\geraete\a.txt
//
//     TQConfiguration settings("messwerk.ini");
//     settings.newCategorie("Messung");
//     settings.setValue("Messung", "Kanal", "3");
//     char *channel = settings.getValue("Messung", "Kanal");      // 3
//     std::free(channel);
//
// A category begins with its name in brackets at the beginning of a line and ends at the next such
// line. A value is a line with a name, `=` and a text that isn't empty; signs of equality in front
// of the name are passed over, blanks belong to name or value. The first line that fits counts.
// Names differ in capitals and small letters. Lines end with a line feed alone: a carriage return
// belongs to the value. Any other line is left as it is.
//
// Limits: 1023 characters of a line, of which a value longer than that is cut there, and the rest
// counts as a further line; 99 of a header with its brackets; 1023 of the name of a program with
// the suffix _Version. What is longer can't be written, and a longer header or name isn't found:
// the operation gives its value for failure.
//
// Nothing is kept in memory, and every operation sees the file as it is. A change writes the whole
// content to a temporary file first (see TQFilename::makeTemp) and then puts it in the place of the
// old one in one step, with its owner and mode: whatever happens, the file holds the old content or
// the new one. Other objects on the same file go on with the new one. Only a file with several
// names, or one in a folder that can't be written, is written over in place. There are no locks: of
// two changes at the same time one can be lost. A change leaves out NUL characters of the file.

#include <memory>

#include "tqlib/foundation/Export.h"
#include "tqplatform/streams/fstream.h"

namespace tqlib::detail {
class SettingsFile;
class SettingsReader;
}  // namespace tqlib::detail

/// The file of settings, open for as long as the object lives. Copies share the open file.
class TQLIB_API TQConfiguration {
  public:
    /// Opens the file that the environment variable TQINI names; without it the object isn't open.
    TQConfiguration();

    /// Opens the file `fileName` for reading and writing, and makes an empty one if there is none.
    /// If that can't be, or the name is null, the object isn't open.
    explicit TQConfiguration(char const *fileName);

    TQConfiguration(TQConfiguration const &) = default;
    TQConfiguration &operator=(TQConfiguration const &) = default;
    ~TQConfiguration();

    /// The name of the file, or an empty text if the object isn't open. It lives as long as the
    /// object and its copies.
    char const *fileName() const;

    /// The stream of the file, which stays the object's; failed if the object isn't open.
    classic::fstream *stream();

    /// The offset of the header of `category`, whose brackets may be left out, or -1 if there is
    /// none. The stream stands behind the line then; it has failed if there is none.
    long searchCategorie(char const *category);

    /// The value `name` in `category`, or null if there is none. The text is the caller's, from
    /// malloc and to be released with free.
    char *getValue(char const *category, char const *name);

    /// The path and the version of a program in the category Programs; see getValue().
    char *getProgramPath(char const *program);
    char *getProgramVersion(char const *program);

    /// Adds the category at the end of the file, behind a blank line. The result is 1, or 0 if it
    /// is there already, the argument is null or empty, or the file can't be changed.
    int newCategorie(char const *category);

    /// Deletes the category with all its lines, the last character of the file excepted. The result
    /// is 1, or 0 if there is none or the file can't be changed.
    int deleteCategorie(char const *category);

    /// Adds a value directly below the header. The result is 0, or 1 if there is no such category,
    /// the name has a value already or the file can't be changed.
    int addValue(char const *category, char const *name, char const *value);

    /// Deletes the first value of that name, if there is one, and adds the new one below the
    /// header. The result is 0, or 1 if there is no such category, the name had several values (the
    /// first is deleted and nothing added then) or the file can't be changed.
    int setValue(char const *category, char const *name, char const *value);

    /// Deletes the first value of that name. The result is 0, also if there was none, or 1 if there
    /// is no such category or the file can't be changed.
    int deleteValue(char const *category, char const *name);

    /// Sets path and version of a program in the category Programs, if there is one. Note the
    /// order. The result is 0, or 1 if the object isn't open or the file can't be changed.
    int addProgram(char const *program, char const *version, char const *path);

    /// Deletes path and version of a program. The result is 0, or 1 if there is no category
    /// Programs or the file can't be changed.
    int deleteProgramm(char const *program);

  private:
    using Reader = tqlib::detail::SettingsReader;

    TQLIB_INTERNAL bool isReady();
    TQLIB_INTERNAL void leaveStreamBehind(Reader const &reader);

    int opened_;
    std::shared_ptr<tqlib::detail::SettingsFile> file_;
};
