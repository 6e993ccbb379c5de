#include "tqlib/foundation/CStrRecord.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "tqlib/foundation/CStrPool.h"

namespace tqlib::detail {
namespace {

char nullText[2] = "";

unsigned int blockSize(std::uint16_t capacity) {
    return capacity + 1U;
}

void destroy(CStrRecord *record) {
    PoolFree(record->text, blockSize(record->capacity));
    record->~CStrRecord();
    PoolFree(record, sizeof(CStrRecord));
}

void drop(CStrRecord *record) {
    if (record->refCount.fetch_sub(1, std::memory_order_acq_rel) == 1) destroy(record);
}

void dropWaiting(CStrRecord *&place) {
    if (place != nullptr) drop(std::exchange(place, nullptr));
}

/// Lets counts wait until the thread ends.
bool prepareWaiting() {
    struct End {
        ~End() {
            waitingState = Waiting::over;
            std::ranges::for_each(waiting, dropWaiting);
        }
    };
    if (waitingState == Waiting::over) return false;
    static thread_local End const end;
    waitingState = Waiting::possible;
    return true;
}

}  // namespace

constinit CStrRecord nullRecord{2, nullText, 0, 1};
constinit thread_local CStrRecord *waiting[1 << waitingBits] = {};
constinit thread_local Waiting waitingState = Waiting::unprepared;

CStrRecord *makeRecord(std::size_t length) {
    auto const capacity = static_cast<std::uint16_t>(roomFor(length));
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

CStrRecord *makeRecord(std::string_view front, std::string_view back, std::size_t length) {
    CStrRecord *const record = makeRecord(length);
    if (!front.empty()) std::memcpy(record->text, front.data(), front.size());
    if (!back.empty()) std::memcpy(record->text + front.size(), back.data(), back.size());
    setLength(*record, front.size() + back.size());
    return record;
}

void enlarge(CStrRecord &record, std::string_view more, std::size_t length) {
    auto const capacity = static_cast<std::uint16_t>(roomFor(length));
    char *const old = record.text;
    unsigned int const oldSize = blockSize(record.capacity);
    bool const fits = blockSize(capacity) <= PoolRoom(oldSize);
    if (!fits) {
        record.text = static_cast<char *>(PoolAlloc(blockSize(capacity)));
        std::memcpy(record.text, old, record.length);
    }
    record.capacity = capacity;
    if (!more.empty()) std::memmove(record.text + record.length, more.data(), more.size());
    setLength(record, record.length + more.size());
    if (!fits) PoolFree(old, oldSize);
}

void releaseSlowly(CStrRecord *record) {
    if (record == &nullRecord) return;
    CStrRecord *&place = placeOf(record);
    if (record == place) dropWaiting(place);
    if (isCountedOnce(*record)) return destroy(record);
    bool const waits = record->capacity <= longestWaiting;
    if (!waits || (waitingState != Waiting::possible && !prepareWaiting())) return drop(record);
    dropWaiting(place);
    place = record;
}

bool isPrivate(CStrRecord &record) {
    if (isCountedOnce(record)) return true;
    CStrRecord *&place = placeOf(&record);
    if (&record != place) return false;
    dropWaiting(place);
    return isCountedOnce(record);
}

}  // namespace tqlib::detail
