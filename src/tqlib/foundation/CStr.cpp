#include "tqlib/foundation/CStr.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include "tqlib/foundation/FormatNumber.h"
#include "tqlib/foundation/ScanNumber.h"

using tqlib::detail::enlarge;
using tqlib::detail::makeRecord;
using tqlib::detail::nullRecord;
using tqlib::detail::release;
using tqlib::detail::roomFor;
using tqlib::detail::setLength;
using tqlib::detail::share;

namespace {

constexpr int indexOutside = 2;
constexpr int tooLong = 5;

char const *orEmpty(char const *text) {
    return text == nullptr ? "" : text;
}

std::string_view viewOf(char const *text) {
    return orEmpty(text);
}

/// The length, if it is within the limit.
std::size_t checked(std::size_t length) {
    if (length > CStr::mostCharacters) CStrFatal(tooLong);
    return length;
}

int signOf(int difference) {
    return (difference > 0) - (difference < 0);
}

char toSmall(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

CStr::CStr(unsigned short capacity) : record_(makeRecord(checked(capacity))) {}

CStr::CStr(char const *text, unsigned short capacity) : CStr() {
    std::string_view const view = viewOf(text);
    std::size_t const room = checked(std::max<std::size_t>(view.size(), capacity));
    if (room > 0) record_ = makeRecord(view, {}, room);
}

CStr::CStr(CString const &text, unsigned short capacity)
    : CStr(static_cast<char const *>(text), capacity) {}

CStr &CStr::operator=(CStr const &other) noexcept {
    if (this != &other) adopt(share(other.record_));
    return *this;
}

// Takes over a count of `record` and gives up the present record.
void CStr::adopt(CStrRecord *record) noexcept {
    release(std::exchange(record_, record));
}

CStr &CStr::operator=(char const *text) {
    assign(viewOf(text));
    return *this;
}

CStr &CStr::operator=(CString const &text) {
    return *this = static_cast<char const *>(text);
}

void CStr::assign(std::string_view text) {
    checked(text.size());
    if (text.empty()) return Clear();
    if (!hasRoomFor(text.size())) return adopt(makeRecord(text, {}, text.size()));
    std::memmove(record_->text, text.data(), text.size());
    setLength(*record_, text.size());
}

// Makes the record private with room for `length` characters.
void CStr::makeRoom(std::size_t length) {
    std::size_t const room = roomFor(length);
    if (!isPrivate())
        adopt(makeRecord(view(), {}, std::max<std::size_t>(room, record_->capacity)));
    else if (room > record_->capacity)
        enlarge(*record_, {}, length);
}

void CStr::Reserve(unsigned short length) {
    makeRoom(checked(length));
}

void CStr::Compact(unsigned short slack) {
    std::size_t const length = record_->length;
    bool const smaller = roomFor(length) < record_->capacity;
    if (record_ != &nullRecord && record_->capacity - length > slack && smaller)
        adopt(makeRecord(view(), {}, length));
}

void CStr::Empty() {
    if (record_ == &nullRecord) return;
    if (isPrivate())
        setLength(*record_, 0);
    else
        adopt(makeRecord(record_->capacity));
}

void CStr::Clear() {
    adopt(&nullRecord);
}

void CStr::append(std::string_view text) {
    if (text.empty()) return;
    std::size_t const length = checked(record_->length + text.size());
    std::size_t const room = roomFor(length);
    if (!isPrivate()) {
        std::size_t const more = std::max<std::size_t>(room, record_->capacity);
        return adopt(makeRecord(view(), text, more));
    }
    if (room > record_->capacity) return enlarge(*record_, text, length);
    std::memmove(record_->text + record_->length, text.data(), text.size());
    setLength(*record_, length);
}

// Replaces the text and keeps the room for it. What can fail comes first.
void CStr::refill(std::string_view text) {
    if (text.empty()) return Empty();
    makeRoom(checked(text.size()));
    Empty();
    append(text);
}

CStr &CStr::operator+=(char c) {
    append({&c, 1});
    return *this;
}

CStr &CStr::operator+=(char const *text) {
    append(viewOf(text));
    return *this;
}

CStr &CStr::operator+=(CStr const &text) {
    append(text.view());
    return *this;
}

void CStr::Append(char const *text, unsigned short count) {
    if (text != nullptr) append({text, count});
}

void CStr::Append(char const *text, unsigned short offset, unsigned short count) {
    if (text != nullptr) append({text + offset, count});
}

void CStr::Append(int value) {
    char digits[tqlib::detail::plainNumberRoom];
    char const *const end = tqlib::detail::formatNumber(digits, value);
    append({digits, static_cast<std::size_t>(end - digits)});
}

void CStr::Append(double value, unsigned int decimals) {
    constexpr unsigned int mostDecimals = 48;
    char digits[256];
    char const *const end =
        tqlib::detail::formatFixed(digits, value, decimals, tqlib::detail::decimalPoint());
    if (end != nullptr) return append({digits, static_cast<std::size_t>(end - digits)});
    auto const places = static_cast<int>(std::min(decimals, mostDecimals));
    std::snprintf(digits, sizeof digits, "%.*f", places, value);
    append(digits);
}

void CStr::Prepend(char const *text) {
    std::string_view const front = viewOf(text);
    if (front.empty()) return;
    std::size_t const length = checked(front.size() + record_->length);
    std::size_t const room = std::max<std::size_t>(roomFor(length), record_->capacity);
    adopt(makeRecord(front, view(), room));
}

char CStr::Last() const {
    if (record_->length == 0) CStrFatal(indexOutside);
    return view().back();
}

void CStr::Mid(unsigned short start, unsigned short count, CStr &out) const {
    CStr const kept(*this);  // `out` may be this string
    out.refill(kept.view().substr(std::min<std::size_t>(start, kept.GetLength()), count));
}

void CStr::Left(unsigned short count, CStr &out) const {
    Mid(0, count, out);
}

void CStr::Right(unsigned short count, CStr &out) const {
    if (count >= record_->length)
        out = *this;
    else
        Mid(static_cast<unsigned short>(record_->length - count), count, out);
}

// Cuts the text to a length that isn't greater.
void CStr::cut(std::size_t length) {
    makeRoom(record_->length);
    setLength(*record_, length);
}

void CStr::Truncate(unsigned short length) {
    if (length < record_->length) cut(length);
}

void CStr::DeleteLeft(unsigned short count) {
    Delete(0, count);
}

void CStr::DeleteRight(unsigned short count) {
    if (count >= record_->length)
        Empty();
    else
        Truncate(static_cast<unsigned short>(record_->length - count));
}

void CStr::Delete(unsigned short start, unsigned short count) {
    std::size_t const length = record_->length;
    if (start >= length || (start == 0 && count >= length)) return Empty();
    std::size_t const end = std::min<std::size_t>(length, std::size_t{start} + count);
    makeRoom(length);
    std::memmove(record_->text + start, record_->text + end, length - end);
    setLength(*record_, length - (end - start));
}

int CStr::Find(char c, unsigned short start) const {
    if (start != 0 && start >= record_->length) CStrFatal(indexOutside);
    char const *const found = std::strchr(record_->text + start, c);
    return found == nullptr ? -1 : static_cast<int>(found - record_->text);
}

int CStr::ReverseFind(char c, unsigned short start) const {
    if (start == wholeText) {
        char const *const found = std::strrchr(record_->text, c);
        return found == nullptr ? -1 : static_cast<int>(found - record_->text);
    }
    if (start >= record_->length) CStrFatal(indexOutside);
    return static_cast<int>(static_cast<std::ptrdiff_t>(view().substr(0, start).rfind(c)));
}

int CStr::Compare(char const *text) const {
    return signOf(std::strcmp(record_->text, orEmpty(text)));
}

int CStr::CompareNoCase(char const *text) const {
    char const *own = record_->text;
    char const *other = orEmpty(text);
    for (; *own != '\0' && toSmall(*own) == toSmall(*other); ++own)
        ++other;
    return signOf(static_cast<unsigned char>(toSmall(*own)) -
                  static_cast<unsigned char>(toSmall(*other)));
}

int CStr::operator==(CStr const &other) const {
    return view() == other.view();
}

int CStr::operator==(char const *text) const {
    return view() == viewOf(text);
}

CStr CStr::operator+(CStr const &text) const {
    return joined(text.view());
}

CStr CStr::operator+(char const *text) const {
    return joined(viewOf(text));
}

CStr CStr::joined(std::string_view text) const {
    std::size_t const length = checked(record_->length + text.size());
    return length == 0 ? CStr() : CStr(Adopted{makeRecord(view(), text, length)});
}
