#pragma once

#include <memory>

#include "tqplatform/streams/filebuf.h"
#include "tqplatform/streams/ios.h"

namespace classic {

/// What ifstream, ofstream and fstream share: `Base` on a file, opened in the direction `direction`
/// whether or not the mode says so. A failed open raises nothing and
/// leaves the stream failed. The file is closed by close(), or by the last copy of the stream.
template <typename Base, int direction, int defaultMode>
class FileStream : public Base {
  public:
    /// A stream without a file; open() may give it one.
    FileStream() { this->init(std::make_shared<filebuf>()); }

    /// Opens the file `name`; see open().
    explicit FileStream(char const *name, int mode = defaultMode,
                        int protection = filebuf::openprot)
        : FileStream() {
        open(name, mode, protection);
    }

    /// Opens the file `name` with `mode`, a sum of ios::open_mode values, and gives a file that it
    /// creates the permission bits `protection`. The state keeps what it had. Sets the fail bit if
    /// the file can't be opened or the stream has one already.
    void open(char const *name, int mode = defaultMode, int protection = filebuf::openprot) {
        filebuf *const buffer = rdbuf();
        if (buffer == nullptr || buffer->open(name, mode | direction, protection) == nullptr)
            this->state_ |= ios::failbit;
    }

    /// Writes what is left and closes the file. Sets the fail bit if no file was open or something
    /// couldn't be written. A stream that had failed stays so; another one becomes good.
    void close() {
        filebuf *const buffer = rdbuf();
        bool const closed = buffer != nullptr && buffer->close() != nullptr;
        this->clear((this->state_ & ios::failed) | (closed ? ios::goodbit : ios::failbit));
    }

    /// True while a file is open.
    bool is_open() const { return rdbuf() != nullptr && rdbuf()->is_open(); }

    /// The file's buffer; it stays the stream's. Null if the stream was assigned one on another
    /// kind of buffer.
    filebuf *rdbuf() const { return dynamic_cast<filebuf *>(ios::rdbuf()); }
};

}  // namespace classic
