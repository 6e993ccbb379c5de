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

    /// Opens the file anew if another one has taken its place since, and sends out what a caller
    /// has written. False if that can't be.
    bool refresh();

    /// The name as it was given, and in the host's form.
    std::string const &name() const { return name_; }
    std::string const &hostName() const { return hostName_; }

    classic::fstream &stream() { return stream_; }
    int descriptor() const { return stream_.rdbuf()->fd(); }

  private:
    bool takeIdentity();
    bool reopen();

    classic::fstream stream_;
    std::string name_;
    std::string hostName_;
    dev_t device_ = 0;
    ino_t number_ = 0;
};

}  // namespace tqlib::detail
