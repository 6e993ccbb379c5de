#pragma once

// A path that takes itself apart and is put together again with one part replaced.
//
//     TQFilename file("C:\\dir\\sub\\file.tar.gz");
//     file.GetDrive();         // C:
//     file.GetDirectory();     // \dir\sub\           with the last backslash
//     file.GetFilename();      // file.tar            the bare name
//     file.GetExtension();     // .gz
//     file.GetPath();          // C:\dir\sub\         drive and directory
//     file.GetName();          // file.tar.gz         name and extension
//     file.newExtension("txt");                    // C:\dir\sub\file.tar.txt
//
// This works on the text alone, with the rules of Windows paths: a drive is a character and a
// colon, the backslash separates folders. Nothing is normalised. Other operations work on the file
// of that path:
//
//     if (file.copy("C:\\backup\\file.tar.gz") != 0) ...
//     unsigned long bytes = file.fileSize();
//     file.edit();                                 // opens it in the user's editor

#include <cstddef>
#include <string_view>

#include "tqlib/datetime/TQDate.h"
#include "tqlib/datetime/TQTime.h"
#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"

/// The path; the text of the base class is the whole of it. The parts are taken from it anew by
/// each operation that needs them, so that together they are always the whole path: a change made
/// through a part's reference is gone at the next such operation.
class TQLIB_API TQFilename : public TQString {
  public:
    /// An empty path.
    TQFilename() = default;

    /// The path `path` without white space at its ends. Null counts as empty.
    TQFilename(TQString const &path) { assign(trimmed(path.text())); }
    TQFilename(CString const &path) { assign(trimmed(path.text())); }
    TQFilename(char const *path) { assign(trimmed(path == nullptr ? "" : path)); }

    /// The whole path of `other`; see above.
    TQFilename(TQFilename const &other) : TQFilename(static_cast<TQString const &>(other)) {}

    /// The path composed by set().
    TQFilename(TQString const &drive, TQString const &path, TQString const &name,
               TQString const &extension);

    /// Copies path and parts.
    TQFilename &operator=(TQFilename const &other) = default;

    /// 1 if the paths are equal but for capitals and small letters of Windows-1252, else 0. Nothing
    /// else is normalised: a\..\b and b differ.
    int operator==(TQFilename const &other) const;
    int operator!=(TQFilename const &other) const { return !(*this == other); }

    /// The same with the path of a text. Note that the order of < stays that of the bytes.
    int operator==(CString const &other) const { return *this == TQFilename(other); }
    int operator!=(CString const &other) const { return !(*this == other); }
    int operator==(char const *other) const { return *this == TQFilename(other); }
    int operator!=(char const *other) const { return !(*this == other); }
    friend int operator==(CString const &text, TQFilename const &path) { return path == text; }
    friend int operator!=(CString const &text, TQFilename const &path) { return path != text; }
    friend int operator==(char const *text, TQFilename const &path) { return path == text; }
    friend int operator!=(char const *text, TQFilename const &path) { return path != text; }

    /// The parts, held by this object and good until its next such operation.
    TQString &GetDrive();
    TQString &GetDirectory();
    TQString &GetFilename();
    TQString &GetExtension();

    /// Drive and directory, or name and extension. The result is shared by all objects and good
    /// until the next call of the same function on any of them; one thread at a time may call it.
    TQString &GetPath();
    TQString &GetName();

    /// Replace one part. White space at the ends of the new path goes.
    void newDrive(TQString const &drive);

    /// Replaces drive and directory by `path`, which ends in a backslash or runs into the name.
    void newPath(TQString const &path);

    /// Replaces the bare name; the extension stays.
    void newName(TQString const &name);

    /// Replaces the name and the extension together.
    void newFilename(TQString const &filename);

    /// Replaces the extension; a dot is put in front of `extension` unless it has one, also if it
    /// is empty.
    void newExtension(TQString const &extension);
    void removeExtension();

    /// Leaves drive and directory.
    void removeFilename();

    /// Composes the path from parts. A backslash is put in front of the name unless drive and path
    /// are empty or end in one, and a dot in front of the extension unless it is empty or begins
    /// with one, or what stands ahead of it is empty or ends in one. An argument that is a part of
    /// this object counts as empty.
    void set(TQString const &drive, TQString const &path, TQString const &name,
             TQString const &extension);

    /// 1 if there is a bare name and neither directory, name nor extension has a wildcard: one of
    /// the characters *?[]. Else 0. Whether there is such a file isn't asked.
    int isValid();

    /// 1 if there is a bare name, else 0.
    int isValidWithWildcards();

    /// 0 if the file exists and may be used as `mode` says, a sum of 2 (write) and 4 (read); else
    /// -1. Mode 0 tests for existence, and so does 1.
    int access(int mode) const;

    /// Gives the file the path `target`, which the object takes over if the result is 0. Another
    /// result is a failure: nothing has changed. A file that is there already is never replaced.
    int rename(TQString const &target);

    /// Deletes the file; 0, or -1 if that can't be. The object keeps its path.
    int remove();

    /// Copies the bytes of the file to the file `target`, which it replaces. The result is 0, or 1
    /// if the target can't be written or is this very file, 2 if this file doesn't exist, 3 if it
    /// can't be read. After a failure the target is as it was.
    int copy(TQString const &target) const;

    /// Hand the file to the program that the setting EDIT, VIEW or PRINT names, and wait for its
    /// end. The command line is the setting, a blank and the path, for print() followed by a blank
    /// and `printer`, or PRN: if that is empty. The path isn't quoted. The result is 0; 1 without
    /// the setting; or -1 if the program can't be started or the command line has more than 1023
    /// characters.
    int edit();
    int view();
    int print(TQString const &printer);

    /// Makes an empty file of a new name, which the object takes over: the setting PATH, or the
    /// current directory and a backslash if it isn't set, and a number that comes from the time of
    /// day, in hexadecimal. The result is 0, 1 if the file can't be made, or 2 if 15 names were
    /// taken.
    int makeTemp();

    /// The size in bytes; 0 for a file that doesn't exist. A larger one than an unsigned long can
    /// tell counts as its low bits.
    unsigned long fileSize() const;

    /// The date and the time of day (without fractions of a second) of the last change of the file,
    /// in UTC; zeros for a file that can't be read. They are shared by all objects and hold until
    /// the next call.
    TQDate &fileDate() const;
    TQTime &fileTime() const;

    /// Set the date, or the time of day, of the last change in UTC; the other half stays. The
    /// result is 0, or -1 with the old time kept if the file can't be changed, its file system
    /// can't store the date, or there is no such date or time from year 1601 on.
    int setFileDate(TQDate const &date);
    int setFileTime(TQTime const &time);

  protected:
    /// 1 if `text` has a wildcard, else 0.
    int HasWildcards(TQString const &text) const;

    /// Takes the parts from the whole path; always 0.
    int SplitPath();

  private:
    // The text that Trim() leaves; nearly always all of it.
    static std::string_view trimmed(std::string_view path) {
        auto const inside = [](char c) { return static_cast<unsigned char>(c) > ' '; };
        if (!path.empty() && inside(path.front()) && inside(path.back())) return path;
        return withoutBlanks(path);
    }
    static std::string_view withoutBlanks(std::string_view path);
    TQLIB_INTERNAL std::size_t split();
    TQLIB_INTERNAL void replaceBy(TQString const &path);

    TQString drive_;
    TQString directory_;
    TQString filename_;
    TQString extension_;
};
