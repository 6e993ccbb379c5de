#pragma once

// The memory of pooled strings: free lists of small blocks in front of malloc.
//
// Each thread keeps some free blocks of every size for itself, so that most requests take no lock.
// What is beyond that goes to lists that all threads share; a thread's blocks go there when it
// ends.

#include <new>

/// Holds the lock of the shared lists for as long as it lives. The thread that holds it may take it
/// again.
class CStrLock {
  public:
    CStrLock();
    CStrLock(CStrLock const &) = delete;
    CStrLock &operator=(CStrLock const &) = delete;
    ~CStrLock();
};

/// The bytes that a block of `size` has, which may be more. All of them may be used if the block is
/// given back with the size that they are used for.
constexpr unsigned int PoolRoom(unsigned int size) {
    constexpr unsigned int grain = 16, header = 8;  // of malloc, which rounds in the same way
    return (size + header + grain - 1) / grain * grain - header;
}

namespace tqlib::detail {

/// Blocks of that size and above don't wait in lists.
inline constexpr unsigned int pooledLimit = 320;

/// The list of a block of `size`: sizes that get the same room share one.
constexpr unsigned int listOf(unsigned int size) {
    return PoolRoom(size) / 16;
}
inline constexpr unsigned int listCount = listOf(pooledLimit - 1) + 1;

struct FreeBlock {
    FreeBlock *next;
};

/// Free blocks of one list that a thread keeps for itself. A thread that isn't registered has
/// neither blocks nor room, so that it comes to the lock at its first request.
struct KeptBlocks {
    FreeBlock *first;
    unsigned int room;  ///< for further blocks
};
extern constinit thread_local KeptBlocks keptLists[listCount];

/// PoolAlloc() and PoolFree() for what a thread can't do by itself.
void *takeShared(unsigned int size);
void giveShared(void *block, unsigned int size);

}  // namespace tqlib::detail

/// A block of `size` bytes, aligned for a pointer. PoolFree() releases it. Throws std::bad_alloc.
inline void *PoolAlloc(unsigned int size) {
    using namespace tqlib::detail;
    if (size >= pooledLimit) return takeShared(size);
    KeptBlocks &kept = keptLists[listOf(size)];
    FreeBlock *const block = kept.first;
    if (block == nullptr) return takeShared(size);
    kept.first = block->next;
    ++kept.room;
    return block;
}

/// Takes a block of `size` bytes back. Below 320 bytes it waits for the next request for as much
/// room.
inline void PoolFree(void *block, unsigned int size) {
    using namespace tqlib::detail;
    if (size >= pooledLimit) return giveShared(block, size);
    KeptBlocks &kept = keptLists[listOf(size)];
    if (kept.room == 0) return giveShared(block, size);
    kept.first = new (block) FreeBlock{kept.first};
    --kept.room;
}

/// Gives the free blocks of this thread and of the shared lists back to the system. What other
/// threads keep for themselves, at most 64 blocks of a size each, stays with them.
void FreePool();
