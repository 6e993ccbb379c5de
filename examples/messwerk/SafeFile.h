#pragma once

// A file that is either complete or not there. It is written under another name in the same folder
// and takes its place when it is complete, so that a run that fails leaves an old file as it was.
// There is one at a time: signals look for it.

#include <string>

namespace messwerk {

class SafeFile {
  public:
    /// Prepares to write `path`. A link is followed to the file it leads to. What isn't an ordinary
    /// file, such as /dev/stdout, is written directly. Throws RunError.
    explicit SafeFile(std::string const &path);
    SafeFile(SafeFile const &) = delete;
    SafeFile &operator=(SafeFile const &) = delete;

    /// Removes the file unless keep() was called. A signal that ends the program does the same.
    ~SafeFile();

    /// Where the content is to be written.
    std::string const &workPath() const { return workPath_; }

    /// Puts the file, which is complete and closed, in its place. Throws RunError.
    void keep();

  private:
    void followLinks();
    void makeTemporary();

    std::string path_;
    std::string workPath_;
    bool direct_ = false;
    int descriptor_ = -1;  ///< of the file at workPath(), unless it is written directly
};

}  // namespace messwerk
