#pragma once

// The library's version information, in the layout that version resources have in program files: a
// tree of length-prefixed blocks in little-endian order, each with a UTF-16 key, a value and
// children, all aligned to 4 bytes. It is a resource of the library's module, and it stands in the
// section ".rsrc.version" of the library's file, where it can be read without loading the library.

#include <array>
#include <cstddef>

namespace tqlib::detail {

inline constexpr std::size_t versionBlockSize = 572;

/// The bytes of the version block.
extern std::array<std::byte, versionBlockSize> const versionBlock;

}  // namespace tqlib::detail
