#include "tqplatform/runtime/Random.h"

namespace tqplatform {

constinit std::atomic<std::uint32_t> randomState = 1;

}  // namespace tqplatform
