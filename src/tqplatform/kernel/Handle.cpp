#include "tqplatform/kernel/Handle.h"

namespace tqplatform {

Handle::~Handle() = default;

}  // namespace tqplatform

int CloseHandle(HANDLE handle) {
    delete handle;
    return handle == nullptr ? 0 : 1;
}
