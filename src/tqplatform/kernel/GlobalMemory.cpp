#include "tqplatform/kernel/GlobalMemory.h"

#include <cstdlib>

// A handle is the address: blocks don't move here.

HGLOBAL GlobalAlloc(unsigned int flags, std::size_t size) {
    std::size_t const bytes = size == 0 ? 1 : size;
    void *const block = (flags & GMEM_ZEROINIT) != 0 ? std::calloc(bytes, 1) : std::malloc(bytes);
    return reinterpret_cast<HGLOBAL>(block);
}

void *GlobalLock(HGLOBAL block) {
    return block;
}

int GlobalUnlock(HGLOBAL /*block*/) {
    return 0;
}

HGLOBAL GlobalFree(HGLOBAL block) {
    std::free(block);
    return nullptr;
}
