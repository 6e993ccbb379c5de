#include "Errors.h"

#include <cstring>

namespace messwerk {

RunError systemError(std::string const &what, int number) {
    return RunError(number == 0 ? what : what + ": " + std::strerror(number));
}

}  // namespace messwerk
