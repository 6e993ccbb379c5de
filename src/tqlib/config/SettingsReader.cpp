#include "tqlib/config/SettingsReader.h"

#include <algorithm>
#include <cstring>

#include "tqlib/config/SettingsDraft.h"

namespace tqlib::detail {

SettingsReader::SettingsReader(SettingsDraft const &content)
    : content_(content), block_(std::make_unique_for_overwrite<char[]>(blockSize)) {}

// Brings more of the file behind what isn't taken yet.
bool SettingsReader::fill() {
    if (ended_) return false;
    std::size_t const kept = blockEnd_ - next_;
    std::memmove(block_.get(), block_.get() + next_, kept);
    offset_ = position();
    next_ = 0;
    blockEnd_ = kept;
    ssize_t const got = content_.read(offset_ + static_cast<std::int64_t>(kept),
                                      block_.get() + kept, blockSize - kept);
    failed_ = got < 0;
    ended_ = got <= 0;
    if (ended_) return false;
    blockEnd_ += static_cast<std::size_t>(got);
    return true;
}

// True if `count` characters can be taken, of less than a block.
bool SettingsReader::has(std::size_t count) {
    while (blockEnd_ - next_ < count)
        if (!fill()) return false;
    return true;
}

// The next line end, if it is there within the longest line; null otherwise.
char const *SettingsReader::lineEnd() const {
    std::size_t const count = std::min(blockEnd_ - next_, longestLine + 1);
    return static_cast<char const *>(std::memchr(block_.get() + next_, '\n', count));
}

bool SettingsReader::takeLine() {
    char const *end = lineEnd();
    bool const whole = end != nullptr || has(longestLine + 1);
    if (end == nullptr) end = lineEnd();
    std::size_t const left = blockEnd_ - next_;
    char const *const line = block_.get() + next_;
    std::size_t const length =
        end == nullptr ? std::min(left, longestLine) : static_cast<std::size_t>(end - line);
    begin_ = position();
    next_ += length + (end == nullptr ? 0 : 1);
    if (end != nullptr) lineStart_ = position();
    text_ = {line, strnlen(line, length)};
    metEnd_ = !whole && end == nullptr && next_ == blockEnd_;
    isAtEnd_ = left == 0;
    return !isAtEnd_ && !failed_;
}

bool SettingsReader::nextLine() {
    return takeLine();
}

bool SettingsReader::nextHeader() {
    while (has(1)) {
        std::string_view const rest(block_.get() + next_, blockEnd_ - next_);
        std::size_t const bracket = std::min(rest.find('['), rest.size());
        std::size_t const lineEnd = rest.substr(0, bracket).rfind('\n');
        if (lineEnd != std::string_view::npos)
            lineStart_ = position() + static_cast<std::int64_t>(lineEnd) + 1;
        next_ += bracket;
        if (bracket == rest.size()) continue;
        if ((position() - lineStart_) % static_cast<std::int64_t>(longestLine) == 0)
            return takeLine();
        ++next_;
    }
    return takeLine();
}

bool SettingsReader::findHeader(std::string_view header) {
    while (nextHeader())
        if (text_.starts_with(header)) return true;
    return false;
}

bool SettingsReader::findValue(std::string_view name) {
    while (nextLine() && !text_.starts_with('[')) {
        std::size_t const begin = std::min(text_.find_first_not_of('='), text_.size());
        std::size_t const equals = text_.find('=', begin);
        if (equals == std::string_view::npos || equals + 1 == text_.size()) continue;
        value_ = text_.substr(equals + 1);
        if (text_.substr(begin, equals - begin) == name) return true;
    }
    return false;
}

std::string_view headerOf(char const *category, char (&room)[headerRoom]) {
    std::string_view const name = category == nullptr ? "" : category;
    bool const opens = name.starts_with('['), closes = name.ends_with(']');
    std::size_t const length = name.size() + (opens ? 0 : 1) + (closes ? 0 : 1);
    if (name.empty() || length >= sizeof room) return {};
    char *end = room;
    if (!opens) *end++ = '[';
    end = std::copy(name.begin(), name.end(), end);
    if (!closes) *end++ = ']';
    return {room, length};
}

}  // namespace tqlib::detail
