#include "tqlib/config/SettingsDraft.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

#include "tqplatform/runtime/SystemCalls.h"

namespace tqlib::detail {
namespace {

constexpr std::size_t blockSize = 64 * 1024;
constexpr std::int64_t endOfFile = std::numeric_limits<std::int64_t>::max();

}  // namespace

SettingsDraft::SettingsDraft(int descriptor, Reading reading)
    : descriptor_(descriptor), pieces_{Piece{0, endOfFile, {}}} {
    if (reading == Reading::again) readHead();
}

// A file that can't be read tells so when it is read.
void SettingsDraft::readHead() {
    head_.text = std::make_unique_for_overwrite<char[]>(blockSize);
    ssize_t const got = tqplatform::readFileAt(descriptor_, head_.text.get(), blockSize, 0);
    head_.size = static_cast<std::size_t>(std::max<ssize_t>(got, 0));
    struct stat status {};
    head_.isWhole = got > 0 && tqplatform::systemCalls.status(descriptor_, &status) == 0 &&
                    S_ISREG(status.st_mode) && status.st_size == static_cast<off_t>(got);
}

ssize_t SettingsDraft::readFile(std::int64_t offset, char *target, std::size_t count) const {
    auto const place = static_cast<std::uint64_t>(offset);
    if (place < head_.size) {
        std::size_t const part = std::min(count, head_.size - static_cast<std::size_t>(place));
        std::memcpy(target, head_.text.get() + place, part);
        return static_cast<ssize_t>(part);
    }
    if (head_.isWhole) return 0;
    return tqplatform::readFileAt(descriptor_, target, count, static_cast<off_t>(offset));
}

// The piece that begins at `offset`.
std::vector<SettingsDraft::Piece>::iterator SettingsDraft::cut(std::int64_t offset) {
    auto piece = pieces_.begin();
    for (; offset >= piece->length; ++piece)
        offset -= piece->length;
    if (offset == 0) return piece;
    Piece rest = *piece;
    rest.offset += offset;
    rest.length -= offset;
    if (!rest.text.empty()) {
        piece->text.resize(static_cast<std::size_t>(offset));
        rest.text.erase(0, static_cast<std::size_t>(offset));
    }
    piece->length = offset;
    return pieces_.insert(piece + 1, std::move(rest));
}

void SettingsDraft::replace(std::int64_t begin, std::int64_t end, std::string text) {
    cut(begin);
    auto const behind = cut(end);
    auto const length = static_cast<std::int64_t>(text.size());
    auto const next = pieces_.erase(cut(begin), behind);
    if (length != 0) pieces_.insert(next, Piece{0, length, std::move(text)});
}

ssize_t SettingsDraft::read(std::int64_t offset, char *target, std::size_t count) const {
    for (Piece const &piece : pieces_) {
        if (offset >= piece.length) {
            offset -= piece.length;
            continue;
        }
        auto const most = static_cast<std::size_t>(
            std::min(piece.length - offset, static_cast<std::int64_t>(count)));
        if (piece.text.empty()) return readFile(piece.offset + offset, target, most);
        return static_cast<ssize_t>(
            piece.text.copy(target, most, static_cast<std::size_t>(offset)));
    }
    return 0;
}

// Hands the content to `take` in big blocks, until that gives false. False if it can't be read.
template <typename Take>
bool SettingsDraft::readAll(Take take) const {
    auto const block = std::make_unique_for_overwrite<char[]>(blockSize);
    std::size_t held = 0;
    for (std::int64_t offset = 0;;) {
        ssize_t const got = read(offset, block.get() + held, blockSize - held);
        if (got < 0) return false;
        offset += got;
        held += static_cast<std::size_t>(got);
        if (got > 0 && held < blockSize) continue;
        if (!take(block.get(), held) || got == 0) return true;
        held = 0;
    }
}

std::int64_t SettingsDraft::writeTo(int target) const {
    std::int64_t written = 0;
    bool good = true;
    bool const readable = readAll([&](char *text, std::size_t count) {
        std::size_t kept = count;
        if (std::memchr(text, '\0', count) != nullptr)
            kept = static_cast<std::size_t>(std::remove(text, text + count, '\0') - text);
        good = tqplatform::writeFile(target, text, kept) == kept;
        written += static_cast<std::int64_t>(kept);
        return good;
    });
    return readable && good ? written : -1;
}

// Looks at what was left out of the file as well, which costs nothing but a step more.
bool SettingsDraft::hasNulInMemory() const {
    return std::memchr(head_.text.get(), '\0', head_.size) != nullptr ||
           std::ranges::any_of(pieces_, [](Piece const &piece) {
               return piece.text.find('\0') != std::string::npos;
           });
}

int SettingsDraft::hasNul() const {
    if (head_.isWhole) return hasNulInMemory() ? 1 : 0;
    int found = 0;
    bool const readable = readAll([&](char const *text, std::size_t count) {
        found = std::memchr(text, '\0', count) != nullptr ? 1 : 0;
        return found == 0;
    });
    return readable ? found : -1;
}

}  // namespace tqlib::detail
