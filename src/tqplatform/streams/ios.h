#pragma once

#include <memory>

#include "tqplatform/runtime/Export.h"
#include "tqplatform/streams/streambuf.h"

namespace classic {

/// What all classic streams have: a shared buffer, a state word and the width of the next word.
/// Copying and assigning a stream shares its buffer object and takes its state; the last stream on
/// a buffer releases it, and with it the file.
class TQPLATFORM_API ios {
  public:
    /// Bits of the state word; 0 is good. A stream has failed when its state has a bit of the
    /// mask failbit | badbit.
    enum io_state { goodbit = 0, eofbit = 1, failbit = 2, badbit = 4 };

    /// Bits of the mode of opening.
    enum open_mode {
        in = 1,            ///< read
        out = 2,           ///< write
        ate = 4,           ///< begin at the end
        app = 8,           ///< write at the end
        trunc = 0x10,      ///< empty the file
        nocreate = 0x20,   ///< the file must exist
        noreplace = 0x40,  ///< the file must not exist
        binary = 0x80      ///< no translation of line ends
    };

    ios(ios const &) = default;
    ios &operator=(ios const &) = default;
    virtual ~ios();

    /// The state word, and what it says: nothing happened; the end of the file was met; an
    /// operation failed; the file refused one.
    int rdstate() const { return state_; }
    bool good() const { return state_ == goodbit; }
    bool eof() const { return (state_ & eofbit) != 0; }
    bool fail() const { return (state_ & failed) != 0; }
    bool bad() const { return (state_ & badbit) != 0; }

    /// The opposite of fail(), and fail().
    explicit operator bool() const { return !fail(); }
    bool operator!() const { return fail(); }

    /// Replaces the whole state word.
    void clear(int state = goodbit) { state_ = state; }

    /// The buffer; it stays the stream's. Null for a stream without one.
    streambuf *rdbuf() const { return buffer_.get(); }

    /// Room for the next word read by operator>>(char *), its NUL included; 0 is no limit. Holds
    /// for one word. The result is the previous value.
    int width(int room);

    /// Switches locking on and off; it is off at first. While it is on, the library takes the lock
    /// of the buffer around direct changes of the state word.
    void setlock() { locking_ = true; }
    void clrlock() { locking_ = false; }

    /// Take the lock of the buffer and give it back; nothing while locking is off or without a
    /// buffer. One thread may take it several times and gives it back as often.
    void lock() {
        if (locking_) lockBuffer();
    }
    void unlock() {
        if (locking_) unlockBuffer();
    }

    /// Holds the lock of a stream for as long as it lives.
    class Lock {
      public:
        explicit Lock(ios &stream) : stream_(stream) { stream.lock(); }
        Lock(Lock const &) = delete;
        Lock &operator=(Lock const &) = delete;
        ~Lock() { stream_.unlock(); }

      private:
        ios &stream_;
    };

  protected:
    static constexpr int failed = failbit | badbit;

    ios() = default;
    void init(std::shared_ptr<streambuf> buffer);

    int state_ = goodbit;
    int width_ = 0;

  private:
    void lockBuffer();
    void unlockBuffer();

    bool locking_ = false;
    std::shared_ptr<streambuf> buffer_;
};

}  // namespace classic
