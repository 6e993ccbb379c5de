#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tqlib::detail {

/// The content of a file of settings with changes that aren't written yet: pieces of the file and
/// texts between them.
class SettingsDraft {
  public:
    /// How often the content is going to be read. What is read again is kept in memory, as far as
    /// the first 64 KiB.
    enum class Reading { once, again };

    /// The content of the file `descriptor`, which must stay open, as it is; its position isn't
    /// moved.
    explicit SettingsDraft(int descriptor, Reading reading = Reading::once);

    /// Puts `text` in the place of the range from `begin` to `end`, of which at least `begin` must
    /// have been read.
    void replace(std::int64_t begin, std::int64_t end, std::string text);

    bool isChanged() const { return pieces_.size() > 1 || pieces_.front().offset != 0; }

    /// Reads at most `count` characters at `offset`. The result is their number, 0 at the end, or
    /// -1 if the file can't be read.
    ssize_t read(std::int64_t offset, char *target, std::size_t count) const;

    /// Writes the content without its NUL characters to the file `target`. The result is the number
    /// of characters, or -1 if that can't be.
    std::int64_t writeTo(int target) const;

    /// 1 if there are, or have been, NUL characters in the content, 0 if there are none, -1 if it
    /// can't be read.
    int hasNul() const;

  private:
    /// A range of the file, or a text.
    struct Piece {
        std::int64_t offset, length;
        std::string text;
    };

    /// The beginning of the file.
    struct Head {
        std::unique_ptr<char[]> text;
        std::size_t size = 0;
        bool isWhole = false;  ///< the file ends there
    };

    void readHead();
    bool hasNulInMemory() const;
    ssize_t readFile(std::int64_t offset, char *target, std::size_t count) const;
    std::vector<Piece>::iterator cut(std::int64_t offset);
    template <typename Take>
    bool readAll(Take take) const;

    int descriptor_;
    Head head_;
    std::vector<Piece> pieces_;  ///< the last one reaches to the end of the file
};

}  // namespace tqlib::detail
