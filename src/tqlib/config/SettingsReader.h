#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tqlib::detail {

class SettingsDraft;

/// Reads a file of settings line by line, a block at a time. A line of more than 1023 characters
/// counts as several ones, each of 1023 characters but the last. What stands in a line behind a NUL
/// is passed over.
class SettingsReader {
  public:
    /// Reads `content`, which must stay as it is, from its beginning on.
    explicit SettingsReader(SettingsDraft const &content);

    /// Go to the next line; to the next line that begins with `[`; to the next header that begins
    /// with `header`; to the next line of this category that gives `name` a value. False if there
    /// is none: the reader stands at the end of the file then, or, for a value, behind the next
    /// header.
    bool nextLine();
    bool nextHeader();
    bool findHeader(std::string_view header);
    bool findValue(std::string_view name);

    /// The text of the line without its line end, and the value that findValue() found; both hold
    /// until the reader moves.
    std::string_view text() const { return text_; }
    std::string_view value() const { return value_; }

    /// The offsets in the file of the line and of what follows it.
    std::int64_t begin() const { return begin_; }
    std::int64_t end() const { return position(); }

    /// Whether the last line met the end of the file before a line end, or no line was left; and
    /// whether none was left.
    bool metEnd() const { return metEnd_; }
    bool isAtEnd() const { return isAtEnd_; }

    /// True if the file couldn't be read to its end.
    bool failed() const { return failed_; }

  private:
    static constexpr std::size_t blockSize = 32 * 1024;

    std::int64_t position() const { return offset_ + static_cast<std::int64_t>(next_); }
    bool fill();
    bool has(std::size_t count);
    char const *lineEnd() const;
    bool takeLine();

    SettingsDraft const &content_;
    std::unique_ptr<char[]> block_;
    std::size_t next_ = 0;        ///< in the block: what isn't taken yet
    std::size_t blockEnd_ = 0;    ///< in the block: behind what was read
    std::int64_t offset_ = 0;     ///< of the block in the file
    std::int64_t lineStart_ = 0;  ///< of the line that ends with the next line end
    std::int64_t begin_ = 0;
    std::string_view text_;
    std::string_view value_;
    bool metEnd_ = false;
    bool isAtEnd_ = false;
    bool ended_ = false;  ///< nothing comes behind the block
    bool failed_ = false;
};

/// Characters of a line, without its line end, and of a header with its brackets and a NUL.
inline constexpr std::size_t longestLine = 1023;
inline constexpr std::size_t headerRoom = 100;

/// The header of `category`, whose brackets may be left out; empty if the category is null or empty
/// or the header is too long.
std::string_view headerOf(char const *category, char (&room)[headerRoom]);

/// The category of the programs, and the name of the value that holds the version of one.
inline constexpr char programCategory[] = "Programs";
inline std::string versionNameOf(std::string_view program) {
    return std::string(program) + "_Version";
}

}  // namespace tqlib::detail
