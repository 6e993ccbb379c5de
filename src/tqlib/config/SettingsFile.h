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
    bool isOpen() const { return stream_.is_open(); }

    /// Opens the file anew if another one has taken its place since, at the same position, and
    /// sends out what a caller has written. False if that can't be.
    bool refresh();

    /// The name as it was given, and as an absolute one in the host's form.
    std::string const &name() const { return name_; }
    std::string const &hostName() const { return hostName_; }

    /// The stream. From now on it is that of the present file after every change.
    classic::fstream &stream() {
        isHandedOut_ = true;
        return stream_;
    }

    /// Goes on with the file that a change has put in place.
    void settle() {
        if (isHandedOut_) refresh();
    }

    /// The stream for the object's own use.
    classic::fstream &ownStream() { return stream_; }
    int descriptor() const { return stream_.rdbuf()->fd(); }

  private:
    bool takeIdentity();
    bool reopen();

    classic::fstream stream_;
    std::string name_;
    std::string hostName_;
    dev_t device_ = 0;
    ino_t number_ = 0;
    bool isHandedOut_ = false;
};

}  // namespace tqlib::detail
