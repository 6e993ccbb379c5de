#include "tqlib/foundation/CStr.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

#include "tqlib/foundation/CStrPool.h"
#include "tqlib/foundation/FormatNumber.h"
#include "tqlib/foundation/ScanNumber.h"

namespace {

constexpr int indexOutside = 2;
constexpr int tooLong = 5;

char nullText[2] = "";

/// The empty string without memory of its own. It counts as shared, so that nothing writes to it;
/// the strings that it stands for are not counted, which threads would have to do one by one.
constinit CStrRecord nullRecord{2, nullText, 0, 1};

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

unsigned int blockSize(std::uint16_t capacity) {
    return capacity + 1U;
}

/// The room that `length` characters get.
std::size_t rounded(std::size_t length) {
    return length | 3;
}

/// A record with an empty text, counted once.
CStrRecord *makeRecord(std::size_t length) {
    auto const capacity = static_cast<std::uint16_t>(rounded(length));
    void *const block = PoolAlloc(sizeof(CStrRecord));
    try {
        auto *const text = static_cast<char *>(PoolAlloc(blockSize(capacity)));
        text[0] = '\0';
        return new (block) CStrRecord{1, text, 0, capacity};
    } catch (...) {
        PoolFree(block, sizeof(CStrRecord));
        throw;
    }
}

void setLength(CStrRecord &record, std::size_t length) {
    record.length = static_cast<std::uint16_t>(length);
    record.text[length] = '\0';
}

/// A record with the text of `front` and `back`, one behind the other, with room for `length`.
CStrRecord *makeRecord(std::string_view front, std::string_view back, std::size_t length) {
    CStrRecord *const record = makeRecord(length);
    if (!front.empty()) std::memcpy(record->text, front.data(), front.size());
    if (!back.empty()) std::memcpy(record->text + front.size(), back.data(), back.size());
    setLength(*record, front.size() + back.size());
    return record;
}

void destroy(CStrRecord *record) {
    PoolFree(record->text, blockSize(record->capacity));
    record->~CStrRecord();
    PoolFree(record, sizeof(CStrRecord));
}

void drop(CStrRecord *record) {
    if (record->refCount.fetch_sub(1, std::memory_order_acq_rel) == 1) destroy(record);
}

// A copy that goes leaves its count to the next copy of the same text in its thread, as long as
// there are further strings with that text: counting up and down takes a multiple of all the rest.
// What waits is part of the count, so that another thread takes the record for shared.

/// The record with such a count, or null.
constinit thread_local CStrRecord *waiting = nullptr;

enum class Waiting { unprepared, possible, over };
constinit thread_local Waiting state = Waiting::unprepared;

void dropWaiting() {
    if (waiting != nullptr) drop(std::exchange(waiting, nullptr));
}

/// Lets counts wait until the thread ends.
[[gnu::noinline]] bool prepareWaiting() {
    struct End {
        ~End() {
            state = Waiting::over;
            dropWaiting();
        }
    };
    if (state == Waiting::over) return false;
    static thread_local End const end;
    state = Waiting::possible;
    return true;
}

CStrRecord *share(CStrRecord *record) {
    if (record == waiting)
        waiting = nullptr;
    else if (record != &nullRecord)
        record->refCount.fetch_add(1, std::memory_order_relaxed);
    return record;
}

/// Releases a record that other strings have as well.
void releaseShared(CStrRecord *record) {
    if (record == waiting) {
        dropWaiting();
        if (record->refCount.load(std::memory_order_acquire) == 1) return destroy(record);
    }
    if (state != Waiting::possible && !prepareWaiting()) return drop(record);
    dropWaiting();
    waiting = record;
}

void release(CStrRecord *record) {
    if (record == &nullRecord) return;
    if (record->refCount.load(std::memory_order_acquire) == 1)
        destroy(record);
    else
        releaseShared(record);
}

int signOf(int difference) {
    return (difference > 0) - (difference < 0);
}

char toSmall(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

CStr::CStr() noexcept : record_(&nullRecord) {}

CStr::CStr(unsigned short capacity) : record_(makeRecord(checked(capacity))) {}

CStr::CStr(char const *text, unsigned short capacity) : CStr() {
    std::string_view const view = viewOf(text);
    std::size_t const room = checked(std::max<std::size_t>(view.size(), capacity));
    if (room > 0) record_ = makeRecord(view, {}, room);
}

CStr::CStr(CString const &text, unsigned short capacity)
    : CStr(static_cast<char const *>(text), capacity) {}

CStr::CStr(CStr const &other) noexcept : record_(share(other.record_)) {}

CStr &CStr::operator=(CStr const &other) noexcept {
    if (record_ != other.record_) adopt(share(other.record_));
    return *this;
}

CStr::~CStr() {
    release(record_);
}

// Takes over a count of `record` and gives up the present record.
void CStr::adopt(CStrRecord *record) noexcept {
    release(std::exchange(record_, record));
}

bool CStr::isPrivate() const noexcept {
    if (record_ == waiting) dropWaiting();
    return record_->refCount.load(std::memory_order_acquire) == 1;
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
    std::size_t const room = rounded(length);
    if (!hasRoomFor(room))
        adopt(makeRecord(view(), {}, std::max<std::size_t>(room, record_->capacity)));
}

void CStr::Reserve(unsigned short length) {
    makeRoom(checked(length));
}

void CStr::Compact(unsigned short slack) {
    std::size_t const length = record_->length;
    bool const smaller = rounded(length) < record_->capacity;
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
    std::size_t const room = rounded(length);
    if (!hasRoomFor(room)) {
        std::size_t const more = std::max<std::size_t>(room, record_->capacity);
        return adopt(makeRecord(view(), text, more));
    }
    std::memmove(record_->text + record_->length, text.data(), text.size());
    setLength(*record_, length);
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
    std::size_t const room = std::max<std::size_t>(rounded(length), record_->capacity);
    adopt(makeRecord(front, view(), room));
}

char CStr::Last() const {
    if (record_->length == 0) CStrFatal(indexOutside);
    return view().back();
}

void CStr::Mid(unsigned short start, unsigned short count, CStr &out) const {
    CStr const kept(*this);  // `out` may be this string
    out.Empty();
    if (start < kept.GetLength()) out.append(kept.view().substr(start, count));
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
    return length == 0 ? CStr() : CStr(makeRecord(view(), text, length));
}
