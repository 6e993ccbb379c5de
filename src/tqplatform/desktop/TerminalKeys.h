#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "tqplatform/desktop/User.h"
#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// What stands at the front of the bytes that a terminal sends.
struct TerminalKey {
    std::size_t bytes = 0;       ///< that it takes; 0 if the rest hasn't come yet
    std::optional<Input> input;  ///< nothing for bytes without a meaning here
};

/// Reads a key: a character, in UTF-8 if `isUtf8` and else in Windows-1252, or a sequence of ESC
/// and others as xterm and its kin send them. `isAll` tells that nothing more is coming, so that an
/// ESC is the key of that name. `bytes` isn't empty.
TQPLATFORM_API TerminalKey readTerminalKey(std::string_view bytes, bool isUtf8, bool isAll);

}  // namespace tqplatform
