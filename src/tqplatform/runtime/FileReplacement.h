#pragma once

// A new content for a file, which takes the place of the old one in one step, so that the file is
// never half written.
//
//     FileReplacement replacement("/home/ada/messwerk.ini", settings.fd());
//     if (replacement.isOpen() && writeFile(replacement.descriptor(), text, size) == size)
//         replacement.commit(Safety::power);
//
// The content is written to a file beside the old one, which is then renamed over it. Where that
// can't be, because the file has several names or is a mount, its owner can't be kept or the folder
// can't be written, the content is gathered in a temporary file and copied into the old file, which
// gets its old content back if something goes wrong.

#include <string>

#include "tqplatform/runtime/Descriptor.h"
#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// How a copy ended.
enum class CopyResult { done, unreadable, unwritable };

/// Copies all that follows the read position of `source` to the write position of `target`, in the
/// fastest way that the system has.
TQPLATFORM_API CopyResult copyRest(int source, int target);

/// What a file has to survive: the end of the program, or the loss of power as well, after which it
/// has the old content or the new one, either of them whole. The latter takes a while on a disk.
enum class Safety { program, power };

/// Puts the complete file `name`, open as `descriptor`, in the place of the file `path`, if both
/// are in one folder. Paths and `like` are those of a FileReplacement. False if they aren't, or it
/// can't be: the file `path` is as it was.
TQPLATFORM_API bool replaceFile(std::string const &path, int like, std::string const &name,
                                int descriptor, Safety safety);

/// The replacement. It owns its files; those that aren't committed are removed at the end.
class TQPLATFORM_API FileReplacement {
  public:
    /// Prepares to replace the file `path`, in the host's form; links are followed to the file that
    /// they lead to. Owner and mode will be those of `like`, the descriptor of the old file open
    /// for writing, which has to stay open; a file that has to be written over in place must be
    /// open for reading as well. A file that was deleted meanwhile is made again.
    FileReplacement(std::string const &path, int like);
    FileReplacement(FileReplacement const &) = delete;
    FileReplacement &operator=(FileReplacement const &) = delete;
    ~FileReplacement();

    /// False if there is no place to write to.
    bool isOpen() const { return content_.isOpen(); }

    /// Where the new content is to be written, from the beginning on.
    int descriptor() const { return content_.number(); }

    /// Puts the new content in place. If the result is false the file is as it was, unless it
    /// isDamaged().
    bool commit(Safety safety);

    /// True if the file could neither be overwritten nor get its old content back.
    bool isDamaged() const { return damaged_; }

  private:
    bool openBeside();
    bool commitInPlace();
    bool commitFromBeside();
    void discard();

    std::string path_;
    std::string name_;  ///< of the file beside; empty if the content goes elsewhere
    int like_;
    Descriptor content_;
    bool damaged_ = false;
};

}  // namespace tqplatform
