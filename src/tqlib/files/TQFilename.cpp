#include "tqlib/files/TQFilename.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr char backslash = '\\';
constexpr char dot = '.';
constexpr std::string_view wildcards = "*?[]";

bool endsWith(CString const &text, char c) {
    return text.view().ends_with(c);
}

}  // namespace

TQFilename::TQFilename(TQString const &path) : TQString(path) {
    Trim();
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
    std::string_view rest = view();
    bool const hasDrive = rest.size() >= 2 && rest[1] == ':';
    drive_.assign(rest.substr(0, hasDrive ? 2 : 0));
    if (hasDrive) rest.remove_prefix(2);

    std::size_t const directory = rest.rfind(backslash) + 1;  // npos makes 0
    directory_.assign(rest.substr(0, directory));
    rest.remove_prefix(directory);

    std::size_t const name = rest.rfind(dot);
    filename_.assign(rest.substr(0, name));
    extension_.assign(rest.substr(std::min(name, rest.size())));
    return 0;
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
    static TQString path;
    SplitPath();
    path = drive_;
    path += directory_;
    return path;
}

TQString &TQFilename::GetName() {
    static TQString name;
    SplitPath();
    name = filename_;
    name += extension_;
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
    return text.view().find_first_of(wildcards) != std::string_view::npos;
}
