#pragma once

// What the pooled strings with one text share: the text, and how many of them there are.
//
// A copy that goes leaves its count to the next copy of the same text in its thread, as long as
// there are further strings with that text: counting up and down takes a multiple of all the rest.
// What waits is part of the count, so that another thread takes the record for shared. Long texts
// don't take part, which limits the memory that a thread may hold that way.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// A text with the number of strings that share it. While that is more than one, the text and the
/// length don't change.
struct CStrRecord {
    std::atomic<std::uint32_t> refCount;  ///< strings that share the record
    char *text;                           ///< ended with a NUL
    std::uint16_t length;                 ///< characters, the NUL not counted
    std::uint16_t capacity;               ///< room for characters, the NUL not counted
};

namespace tqlib::detail {

/// The empty string without memory of its own. It counts as shared, so that nothing writes to it;
/// the strings that it stands for are not counted, which threads would have to do one by one.
extern constinit CStrRecord nullRecord;

/// The room that `length` characters get.
constexpr std::size_t roomFor(std::size_t length) {
    return length | 3;
}

/// A record with an empty text and room for `length` characters, counted once. Throws
/// std::bad_alloc.
CStrRecord *makeRecord(std::size_t length);

/// The same with the text of `front` and `back`, one behind the other.
CStrRecord *makeRecord(std::string_view front, std::string_view back, std::size_t length);

/// Gives a private text room for `length` characters and appends `more`, which may be a part of it.
/// Throws std::bad_alloc, with the text unchanged.
void enlarge(CStrRecord &record, std::string_view more, std::size_t length);

/// Cuts a private text, or lengthens it by what stands behind it.
inline void setLength(CStrRecord &record, std::size_t length) {
    record.length = static_cast<std::uint16_t>(length);
    record.text[length] = '\0';
}

inline constexpr unsigned int waitingBits = 10;
inline constexpr std::uint16_t longestWaiting = 319;

/// Records with a count that waits, each at a place that its address tells, or null.
extern constinit thread_local CStrRecord *waiting[1 << waitingBits];

/// Whether counts of a thread may wait: only once it is known what becomes of them when it ends.
enum class Waiting { unprepared, possible, over };
extern constinit thread_local Waiting waitingState;

inline CStrRecord *&placeOf(CStrRecord const *record) {
    // The high bits of the product depend on all bits of the address.
    constexpr std::uint32_t spread = 0x9E3779B1;
    auto const address = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(record) >> 4);
    return waiting[address * spread >> (32 - waitingBits)];
}

inline bool isCountedOnce(CStrRecord const &record) {
    return record.refCount.load(std::memory_order_acquire) == 1;
}

/// release() for a record whose count can't simply wait.
void releaseSlowly(CStrRecord *record);

/// Counts one more string.
inline CStrRecord *share(CStrRecord *record) {
    CStrRecord *&place = placeOf(record);
    if (record == place)
        place = nullptr;
    else if (record != &nullRecord)
        record->refCount.fetch_add(1, std::memory_order_relaxed);
    return record;
}

/// Counts one string less; the last one gives the memory back.
inline void release(CStrRecord *record) {
    CStrRecord *&place = placeOf(record);
    bool const waits = waitingState == Waiting::possible && record->capacity <= longestWaiting;
    if (place != nullptr || !waits || isCountedOnce(*record) || record == &nullRecord)
        return releaseSlowly(record);
    place = record;
}

/// True if only one string has the record. A count that waits in this thread is dropped for that.
bool isPrivate(CStrRecord &record);

}  // namespace tqlib::detail
