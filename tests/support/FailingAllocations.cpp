#include "support/FailingAllocations.h"

#include <cstddef>

// The C runtime's own, which the functions of the published names stand in front of. operator new
// goes by malloc.
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void __libc_free(void *block);
}

namespace {

constinit long heldNow = 0;
constinit long untilFailure = 0;  ///< 0 for none
constinit bool hasFailed = false;

bool failsNow() {
    if (untilFailure == 0 || --untilFailure != 0) return false;
    hasFailed = true;
    return true;
}

void *counted(void *block) {
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

// The libraries are to find them, too.
#pragma GCC visibility push(default)

extern "C" {

void *malloc(std::size_t size) {
    return failsNow() ? nullptr : counted(__libc_malloc(size));
}

void *calloc(std::size_t count, std::size_t size) {
    return failsNow() ? nullptr : counted(__libc_calloc(count, size));
}

void *realloc(void *block, std::size_t size) {
    if (block == nullptr) return malloc(size);
    return failsNow() ? nullptr : __libc_realloc(block, size);
}

void free(void *block) {
    if (block != nullptr) --heldNow;
    __libc_free(block);
}
}

#pragma GCC visibility pop
