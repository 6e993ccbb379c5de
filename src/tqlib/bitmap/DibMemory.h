#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>

#include "tqplatform/framework/CException.h"
#include "tqplatform/graphics/CDC.h"

namespace tqlib::detail {

/// Memory as bitmaps own it, released with operator delete. Throws std::bad_alloc.
inline std::uint8_t *allocate(std::uint64_t size) {
    if (size > std::numeric_limits<std::ptrdiff_t>::max()) throw std::bad_alloc();
    return static_cast<std::uint8_t *>(::operator new(static_cast<std::size_t>(size)));
}

struct DeleteBlock {
    void operator()(void *block) const { ::operator delete(block); }
};
using Block = std::unique_ptr<std::uint8_t, DeleteBlock>;

inline HDC contextOf(CDC const *dc) {
    return dc == nullptr ? nullptr : dc->m_hDC;
}

}  // namespace tqlib::detail
