#pragma once

// Starts another program: beside the caller, with the caller waiting for it, or in its place.
//
//     TQExecute editor("vi C:\\tmp\\a.txt");
//     if (editor.start(TQExecute::startAndWait) != 0) ...      // there is no vi
//
//     char const *const words[] = {"xterm", "-e", "top", nullptr};
//     TQExecute(words).start(TQExecute::startDetached);
//
// No shell stands in between. The first word is the program, which is searched along PATH unless it
// is a path; double quotes keep a word with blanks together, and an absolute path with the drive C:
// reaches the program in the host's form (see tqplatform/kernel/Process.h).

#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"

/// A command that can be started, any number of times. The interface has the shape of a parent and
/// its child; here the object is always the parent's, and it holds on to no program.
class TQLIB_API TQExecute {
  public:
    /// What the caller does when the program has started.
    enum startmode : int {
        startDetached = 0,  ///< goes on
        startAndWait = 1,   ///< goes on when the program has ended
        startReplacing = 2  ///< ends
    };

    /// No command.
    TQExecute() = default;

    /// The command `command`; null counts as empty.
    TQExecute(char const *command) : command_(command) {}
    TQExecute(CString const &command) : command_(command) {}

    /// The words of a null-ended list, which stays the caller's and must live until start().
    TQExecute(char const *const *arguments) : arguments_(arguments) {}

    /// Starts the program. The first call on a list joins its words, with a blank behind each and
    /// no quotes, into the command: a word with blanks becomes several.
    ///
    /// The result is 0, also if the program fails later, and -1 if there is no command, no such
    /// program or no such mode. In the mode startReplacing a success ends the process by exit(0).
    int start(startmode mode);

    /// Always 0: there is no number of a child.
    int child() const { return childId_; }

    /// Always -1: no program is held that one could wait for or end.
    int wait() const { return -1; }
    int kill() const { return -1; }

    /// Always 0 and 1: a program started is no copy of the caller.
    int isChild() const { return parent_ == 0 ? 1 : 0; }
    int isParent() const { return parent_; }

  private:
    TQLIB_INTERNAL void joinArguments();

    int childId_ = 0;
    TQString command_;
    char const *const *arguments_ = nullptr;
    int parent_ = 1;
};
