#pragma once

#include <sys/types.h>

#include <string>

#include "tqplatform/streams/fstream.h"

namespace tqlib::detail {

/// An open file of settings.
class SettingsFile {
  public:
    /// Opens the file `name`, or none if it is null.
    explicit SettingsFile(char const *name);

    /// True if the file could be opened.
    bool isOpen() const { return descriptor_ >= 0; }

    /// Opens the file anew if another one has taken its place since, at the same position, and
    /// sends out what a caller has written. False if that can't be.
    bool refresh();

    /// The name as it was given, and as an absolute one in the host's form.
    std::string const &name() const { return name_; }
    std::string const &hostName() const { return hostName_; }

    /// The stream, where place() has put it last. From now on it is that of the present file after
    /// every change.
    classic::fstream &stream();

    /// Puts the stream at `position`, in `state`.
    void place(classic::streampos position, int state);

    /// Goes on with the file that a change has put in place, or with its new content.
    void settle();

    int descriptor() const { return descriptor_; }

  private:
    bool takeIdentity();
    void notePlace();
    bool reopen();

    classic::fstream stream_;
    std::string name_;
    std::string hostName_;
    int descriptor_ = -1;  ///< of the stream
    dev_t device_ = 0;
    ino_t number_ = 0;
    bool isHandedOut_ = false;
    classic::streampos position_ = 0;  ///< for the stream when it is handed out, with its state
    int state_ = 0;
};

}  // namespace tqlib::detail
