#include "tqlib/files/TQFilename.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "tqlib/foundation/ScanNumber.h"
#include "tqlib/foundation/SharedResult.h"

namespace {

constexpr char backslash = '\\';
constexpr char dot = '.';
constexpr std::string_view wildcards = "*?[]";

constinit tqlib::detail::SharedResult<TQString> sharedPath, sharedName;

[[gnu::destructor]] void releaseResults() {
    sharedPath.release();
    sharedName.release();
}

// The lowest bit of each byte that stands for one of the eight characters at `text`, the lowest
// byte for the first: set if it is `c`.
std::uint64_t placesOf(char c, char const *text) {
    static_assert(std::endian::native == std::endian::little);
    constexpr std::uint64_t ones = 0x0101010101010101, low = 0x7F * ones;
    std::uint64_t word;
    std::memcpy(&word, text, sizeof word);
    word ^= ones * static_cast<unsigned char>(c);
    return ~(((word & low) + low) | word | low) >> 7;
}

// The index behind the last `c` of the sixteen characters at `text`, or 0.
std::size_t behindLastOf16(char const *text, char c) {
    std::uint64_t const front = placesOf(c, text), back = placesOf(c, text + 8);
    std::uint64_t const places = back != 0 ? back : front;
    auto const bits = static_cast<std::size_t>(std::bit_width(places));
    return (back != 0 ? 8 : 0) + (bits + 7) / 8;
}

// The index behind the last `c` of `text` from the index `from` on, or `from`. Looks at 16
// characters at a time, since the length of a name is hard to guess.
std::size_t behindLast(std::string_view text, std::size_t from, char c) {
    std::size_t end = text.size();
    for (; end >= 16 && end > from; end -= 16) {
        std::size_t const behind = behindLastOf16(text.data() + end - 16, c);
        if (behind != 0) return std::max(from, end - 16 + behind);
    }
    while (end > from && text[end - 1] != c)
        --end;
    return std::max(from, end);
}

bool endsWith(CString const &text, char c) {
    return text.text().ends_with(c);
}

}  // namespace

std::string_view TQFilename::withoutBlanks(std::string_view path) {
    while (!path.empty() && tqlib::detail::isWhiteSpace(path.back()))
        path.remove_suffix(1);
    while (!path.empty() && tqlib::detail::isWhiteSpace(path.front()))
        path.remove_prefix(1);
    return path;
}

TQFilename::TQFilename(TQString const &drive, TQString const &path, TQString const &name,
                       TQString const &extension) {
    set(drive, path, name, extension);
}

int TQFilename::operator==(TQFilename const &other) const {
    CString own(*this), others(other);
    own.MakeLower();
    others.MakeLower();
    return own == others;
}

int TQFilename::SplitPath() {
    split();
    return 0;
}

// Takes the parts from the whole path. The result is where the name begins.
std::size_t TQFilename::split() {
    std::string_view const whole = text();
    std::size_t const drive = whole.size() >= 2 && whole[1] == ':' ? 2 : 0;
    std::size_t const name = behindLast(whole, drive, backslash);
    std::size_t const dotted = behindLast(whole, name, dot);
    std::size_t const extension = dotted == name ? whole.size() : dotted - 1;
    drive_.assign(whole.substr(0, drive));
    directory_.assign(whole.substr(drive, name - drive));
    filename_.assign(whole.substr(name, extension - name));
    extension_.assign(whole.substr(extension));
    return name;
}

TQString &TQFilename::GetDrive() {
    SplitPath();
    return drive_;
}

TQString &TQFilename::GetDirectory() {
    SplitPath();
    return directory_;
}

TQString &TQFilename::GetFilename() {
    SplitPath();
    return filename_;
}

TQString &TQFilename::GetExtension() {
    SplitPath();
    return extension_;
}

TQString &TQFilename::GetPath() {
    TQString &path = sharedPath.get();
    path.assign(text().substr(0, split()));
    return path;
}

TQString &TQFilename::GetName() {
    TQString &name = sharedName.get();
    name.assign(text().substr(split()));
    return name;
}

void TQFilename::replaceBy(TQString const &path) {
    *this = TQFilename(path);
    SplitPath();
}

void TQFilename::newDrive(TQString const &drive) {
    SplitPath();
    replaceBy(drive + directory_ + filename_ + extension_);
}

void TQFilename::newPath(TQString const &path) {
    SplitPath();
    replaceBy(path + filename_ + extension_);
}

void TQFilename::newName(TQString const &name) {
    SplitPath();
    replaceBy(drive_ + directory_ + name + extension_);
}

void TQFilename::newFilename(TQString const &filename) {
    SplitPath();
    replaceBy(drive_ + directory_ + filename);
}

void TQFilename::newExtension(TQString const &extension) {
    SplitPath();
    char const *const point = extension[0] == dot ? "" : ".";
    replaceBy(drive_ + directory_ + filename_ + point + extension);
}

void TQFilename::removeExtension() {
    SplitPath();
    replaceBy(drive_ + directory_ + filename_);
}

void TQFilename::removeFilename() {
    SplitPath();
    replaceBy(drive_ + directory_);
}

void TQFilename::set(TQString const &drive, TQString const &path, TQString const &name,
                     TQString const &extension) {
    *this = TQFilename();
    TQString const parts[] = {drive, path, name, extension};  // a part of this object is empty now
    TQString &whole = *this;
    whole += parts[0];
    whole += parts[1];
    if (!whole.IsEmpty() && !endsWith(whole, backslash)) whole += backslash;
    whole += parts[2];
    bool const hasDot = endsWith(whole, dot) || parts[3][0] == dot;
    if (!parts[3].IsEmpty() && !whole.IsEmpty() && !hasDot) whole += dot;
    whole += parts[3];
    whole.Trim();
    drive_ = parts[0];
    directory_ = parts[1];
    filename_ = parts[2];
    extension_ = parts[3];
}

int TQFilename::isValid() {
    SplitPath();
    return !filename_.IsEmpty() && !HasWildcards(directory_) && !HasWildcards(filename_) &&
           !HasWildcards(extension_);
}

int TQFilename::isValidWithWildcards() {
    SplitPath();
    return !filename_.IsEmpty();
}

int TQFilename::HasWildcards(TQString const &text) const {
    return text.text().find_first_of(wildcards) != std::string_view::npos;
}
