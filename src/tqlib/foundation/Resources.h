#pragma once

#include "tqplatform/kernel/Module.h"

namespace tqlib::detail {

/// Numbers of the library's string resources.
enum StringId : unsigned int {
    valueTooSmall = 911,
    valueTooLarge = 912,
    valueUnusuallySmall = 913,
    valueUnusuallyLarge = 914,
    numberExpected = 915,
    yes = 960,
    no = 961
};

/// The number of the version block.
inline constexpr unsigned int versionResource = 1;

/// This library's module with its resources, all in German.
extern tqplatform::Module const libraryModule;

}  // namespace tqlib::detail
