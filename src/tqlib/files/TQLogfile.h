#pragma once

// A trace log with levels: a text file named after the program, with a line for each message.
//
//     TQLogfile log(argv[0]);                  // messwerk.log
//     log.printf(0, "%d rows read", rows);     // always written
//     log.printf(3, "row %d: %s", row, text);  // written from level 3 on
//
// The environment variable TQDIR, or the setting DIR (see getLibrarySetting.h), names the folder,
// with its separator at the end; TQTRACE, or the setting TRACE, the level up to which messages are
// written. It is 0 without the setting; a negative one switches the log off. The file is emptied
// when the log opens it, and begins with the line "Start mit Level ", its level behind, when the
// first message comes. The last line is then "Ende des Programmes".
//
// Each message is written at once, in one piece: what printf() has taken isn't lost when the
// program is killed. If the disk is full, messages wait for room, up to 32 KiB of them; further
// ones are left out. For one thread at a time.

#include <memory>
#include <string>
#include <type_traits>

#include "tqlib/foundation/Export.h"
#include "tqplatform/framework/CString.h"

/// The log. Copies share the file; the last of them writes the end line and closes it.
class TQLIB_API TQLogfile {
  public:
    /// Opens the log of `program`, a name or a path with slashes: the last extension is replaced by
    /// .log. With a folder in the settings, the log stands there and takes only what follows the
    /// last slash. If it can't be opened, or `program` is null, the log is dead: its level is -1
    /// for ever, and nothing is written.
    explicit TQLogfile(char const *program);

    TQLogfile(TQLogfile const &) = default;
    TQLogfile &operator=(TQLogfile const &) = default;
    ~TQLogfile();

    /// Writes a message if `level` is at most the trace level; a negative level always is. Format
    /// and arguments are those of std::printf; a CString or std::string is taken for "%s" as well.
    /// A message is cut at 4095 characters. The result is always 0.
    template <typename... Arguments>
    int printf(int level, char const *format, Arguments const &...arguments) {
        bool const written = level <= tracelevel_ || startPending_ != 0;
        if (tracelevel_ >= 0 && written) write(level, format, plain(arguments)...);
        return 0;
    }

    /// The trace level.
    int getTracelevel() const { return tracelevel_; }

    /// Sets the trace level of this object, unless `level` is negative, and gives the one before. A
    /// dead log stays dead and gives -1.
    int setTracelevel(int level);

  private:
    class File;

    template <typename Argument>
    static auto plain(Argument const &argument) {
        if constexpr (std::is_base_of_v<CString, Argument>) {
            return static_cast<char const *>(argument);
        } else if constexpr (std::is_same_v<Argument, std::string>) {
            return argument.c_str();
        } else {
            using Plain = std::decay_t<Argument const &>;
            static_assert(std::is_scalar_v<Plain>, "printf takes numbers, pointers and texts");
            return static_cast<Plain>(argument);
        }
    }

    void write(int level, char const *format, ...);

    int tracelevel_;
    int startPending_;
    std::shared_ptr<File> file_;
};
