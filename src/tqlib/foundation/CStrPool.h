#pragma once

// The memory of pooled strings: free lists of small blocks in front of malloc.
//
// Each thread keeps a few free blocks of every size for itself, so that most requests take no lock.
// What is beyond that goes to lists that all threads share; a thread's blocks go there when it
// ends.

/// Holds the lock of the shared lists for as long as it lives. The thread that holds it may take it
/// again.
class CStrLock {
  public:
    CStrLock();
    CStrLock(CStrLock const &) = delete;
    CStrLock &operator=(CStrLock const &) = delete;
    ~CStrLock();
};

/// A block of `size` bytes, a multiple of 4, aligned for a pointer. PoolFree() releases it. Throws
/// std::bad_alloc.
void *PoolAlloc(unsigned int size);

/// Takes a block of `size` bytes back. Below 320 bytes it waits for the next request of its size.
void PoolFree(void *block, unsigned int size);

/// Gives the free blocks of this thread and of the shared lists back to the system. What other
/// threads keep for themselves, at most 64 blocks of a size each, stays with them.
void FreePool();
