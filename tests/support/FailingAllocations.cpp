#include "support/FailingAllocations.h"

#include <cstdlib>
#include <new>

namespace {

constinit long heldNow = 0;
constinit long untilFailure = 0;  ///< 0 for none
constinit bool hasFailed = false;

bool failsNow() {
    if (untilFailure == 0 || --untilFailure != 0) return false;
    hasFailed = true;
    return true;
}

void *allocate(std::size_t size) {
    void *const block = failsNow() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block != nullptr) ++heldNow;
    return block;
}

}  // namespace

long FailingAllocations::held() {
    return heldNow;
}

void FailingAllocations::failAt(long number) {
    untilFailure = number;
    hasFailed = false;
}

bool FailingAllocations::stop() {
    untilFailure = 0;
    return hasFailed;
}

void *operator new(std::size_t size) {
    void *const block = allocate(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void *operator new(std::size_t size, std::nothrow_t const &) noexcept {
    return allocate(size);
}

void *operator new[](std::size_t size) {
    return operator new(size);
}

void *operator new[](std::size_t size, std::nothrow_t const &) noexcept {
    return allocate(size);
}

void operator delete(void *block) noexcept {
    if (block != nullptr) --heldNow;
    std::free(block);
}

void operator delete(void *block, std::size_t) noexcept {
    operator delete(block);
}

void operator delete[](void *block) noexcept {
    operator delete(block);
}

void operator delete[](void *block, std::size_t) noexcept {
    operator delete(block);
}
