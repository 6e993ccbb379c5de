#pragma once

/// Counts the program's calls of malloc and its like, and lets one of them fail. Not with a
/// sanitizer, which has an allocator of its own.
struct FailingAllocations {
    /// Allocations that are held at present.
    static long held();

    /// Lets the allocation number `number` from now on fail, the first being 1.
    static void failAt(long number);

    /// Lets none fail any more; true if one has.
    static bool stop();
};
