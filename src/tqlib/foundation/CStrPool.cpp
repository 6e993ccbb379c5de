#include "tqlib/foundation/CStrPool.h"

#include <algorithm>
#include <cstdlib>
#include <mutex>

namespace tqlib::detail {

constinit thread_local KeptBlocks keptLists[listCount] = {};

namespace {

/// Most free blocks of a list that a thread keeps for itself.
constexpr unsigned int mostKept = 64;

FreeBlock *pop(FreeBlock *&list) {
    FreeBlock *const block = list;
    list = block->next;
    return block;
}

void push(FreeBlock *&list, void *block) {
    list = new (block) FreeBlock{list};
}

constinit std::recursive_mutex sharedLock;
constinit FreeBlock *sharedLists[listCount] = {};

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
    static_assert(PoolRoom(1) >= sizeof(FreeBlock));
    void *const block = std::malloc(std::max(size, PoolRoom(size)));  // the room of 4 GB is small
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void freeAll(FreeBlock *&list) {
    while (list != nullptr)
        std::free(pop(list));
}

}  // namespace

// From the shared lists, with further blocks for the thread to keep; else from malloc.
void *takeShared(unsigned int size) {
    if (size >= pooledLimit) return allocate(size);
    registerThread();
    KeptBlocks &kept = keptLists[listOf(size)];
    FreeBlock *&shared = sharedLists[listOf(size)];
    CStrLock const lock;
    if (shared == nullptr) return allocate(size);
    FreeBlock *const block = pop(shared);
    for (; shared != nullptr && kept.room > mostKept / 2; --kept.room)
        push(kept.first, pop(shared));
    return block;
}

void giveShared(void *block, unsigned int size) {
    if (size >= pooledLimit) return std::free(block);
    registerThread();
    unsigned int const index = listOf(size);
    KeptBlocks &kept = keptLists[index];
    if (kept.room == 0) share(index);
    if (kept.room == 0) {  // the thread is ending
        CStrLock const lock;
        push(sharedLists[index], block);
    } else {
        push(kept.first, block);
        --kept.room;
    }
}

}  // namespace tqlib::detail

CStrLock::CStrLock() {
    tqlib::detail::sharedLock.lock();
}

CStrLock::~CStrLock() {
    tqlib::detail::sharedLock.unlock();
}

void FreePool() {
    using namespace tqlib::detail;
    CStrLock const lock;
    for (unsigned int index = 0; index < listCount; ++index) {
        share(index);
        freeAll(sharedLists[index]);
    }
}
