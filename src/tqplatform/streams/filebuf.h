#pragma once

#include <cstddef>
#include <memory>

#include "tqplatform/streams/streambuf.h"

namespace classic {

/// The buffer of a stream on a file: one block of 64 KiB over the system's calls, used for reading
/// or for writing, whichever was asked for last. Closes its file when it is destroyed.
class TQPLATFORM_API filebuf : public streambuf {
  public:
    /// Permission bits that a created file gets, less the process's mask, when nothing else is
    /// said.
    static constexpr int openprot = 0666;

    filebuf() = default;
    ~filebuf() override;

    /// Opens the file `name` with `mode`, a sum of ios::open_mode values, and gives a file that it
    /// creates the permission bits `protection`. The result is this buffer, or null if it has a
    /// file already or the file can't be opened; a folder can't be.
    filebuf *open(char const *name, int mode, int protection = openprot);

    /// Writes what is left and closes the file. The result is this buffer, or null if no file was
    /// open or something couldn't be written; the file is closed in either case.
    filebuf *close();

    /// True while a file is open.
    bool is_open() const { return descriptor_ >= 0; }

    /// The descriptor of the open file, or -1. It stays this buffer's.
    int fd() const { return descriptor_; }

    /// See streambuf. Each sends out first what was written.
    streampos seekpos(streampos position) override;
    streampos seekoff(streamoff distance, int origin) override;
    int sync() override;

  protected:
    bool fill() override;
    bool drain() override;

  private:
    static constexpr std::size_t blockSize = 64 * 1024;

    bool startReading();

    int descriptor_ = -1;
    bool readable_ = false;
    bool writable_ = false;
    bool appending_ = false;         ///< everything written goes to the end
    streamoff offset_ = 0;           ///< the system's offset in the file
    std::unique_ptr<char[]> block_;  ///< made at the first transfer
};

}  // namespace classic
