#include "tqlib/foundation/CStrPool.h"

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <new>

namespace {

constexpr unsigned int listCount = 80;
constexpr unsigned int grain = 4;  ///< bytes between the sizes of two lists
constexpr unsigned int pooledLimit = listCount * grain;

/// Most free blocks of a size that a thread keeps for itself.
constexpr unsigned int mostKept = 64;

struct FreeBlock {
    FreeBlock *next;
};

FreeBlock *pop(FreeBlock *&list) {
    FreeBlock *const block = list;
    list = block->next;
    return block;
}

void push(FreeBlock *&list, FreeBlock *block) {
    block->next = list;
    list = block;
}

/// Free blocks of one size that a thread keeps for itself. A thread that isn't registered has
/// neither blocks nor room, so that it comes to the lock at its first request.
struct KeptBlocks {
    FreeBlock *first;
    unsigned int room;  ///< for further blocks
};

constinit std::recursive_mutex sharedLock;
constinit FreeBlock *sharedLists[listCount] = {};

constinit thread_local KeptBlocks keptLists[listCount] = {};
constinit thread_local bool ended = false;

void share(unsigned int index) {
    CStrLock const lock;
    for (KeptBlocks &kept = keptLists[index]; kept.first != nullptr; ++kept.room)
        push(sharedLists[index], pop(kept.first));
}

/// Lets a thread keep blocks until it ends.
class Registration {
  public:
    Registration() {
        for (KeptBlocks &kept : keptLists)
            kept.room = mostKept;
    }
    Registration(Registration const &) = delete;
    Registration &operator=(Registration const &) = delete;
    ~Registration() {
        ended = true;
        for (unsigned int index = 0; index < listCount; ++index) {
            share(index);
            keptLists[index].room = 0;
        }
    }
};

void registerThread() {
    if (!ended) static thread_local Registration const registration;
}

void *allocate(unsigned int size) {
    void *const block = std::malloc(std::max<std::size_t>(size, sizeof(FreeBlock)));
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

// A block from the shared lists, with further ones for the thread to keep; else from malloc.
[[gnu::noinline]] void *takeShared(unsigned int size) {
    registerThread();
    unsigned int const index = size / grain;
    KeptBlocks &kept = keptLists[index];
    CStrLock const lock;
    FreeBlock *&shared = sharedLists[index];
    if (shared == nullptr) return allocate(size);
    FreeBlock *const block = pop(shared);
    for (; shared != nullptr && kept.room > mostKept / 2; --kept.room)
        push(kept.first, pop(shared));
    return block;
}

// Shares the thread's blocks of a size where there is no room for `block`.
[[gnu::noinline]] void giveShared(FreeBlock *block, unsigned int index) {
    registerThread();
    KeptBlocks &kept = keptLists[index];
    if (kept.room == 0) share(index);
    if (ended) {
        CStrLock const lock;
        push(sharedLists[index], block);
    } else {
        push(kept.first, block);
        --kept.room;
    }
}

void freeAll(FreeBlock *&list) {
    while (list != nullptr)
        std::free(pop(list));
}

}  // namespace

CStrLock::CStrLock() {
    sharedLock.lock();
}

CStrLock::~CStrLock() {
    sharedLock.unlock();
}

void *PoolAlloc(unsigned int size) {
    if (size >= pooledLimit) return allocate(size);
    KeptBlocks &kept = keptLists[size / grain];
    if (kept.first == nullptr) return takeShared(size);
    ++kept.room;
    return pop(kept.first);
}

void PoolFree(void *block, unsigned int size) {
    if (size >= pooledLimit) return std::free(block);
    KeptBlocks &kept = keptLists[size / grain];
    auto *const freed = static_cast<FreeBlock *>(block);
    if (kept.room == 0) return giveShared(freed, size / grain);
    push(kept.first, freed);
    --kept.room;
}

void FreePool() {
    CStrLock const lock;
    for (unsigned int index = 0; index < listCount; ++index) {
        share(index);
        freeAll(sharedLists[index]);
    }
}
