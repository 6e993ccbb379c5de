#include "tqplatform/streams/ios.h"

#include <utility>

#include "tqplatform/runtime/CRuntime.h"

namespace classic {

ios::~ios() = default;

void ios::init(std::shared_ptr<streambuf> buffer) {
    buffer_ = std::move(buffer);
    state_ = buffer_ == nullptr ? badbit : goodbit;
}

int ios::width(int room) {
    return std::exchange(width_, room);
}

void ios::lockBuffer() {
    if (buffer_ != nullptr) _mtlock(buffer_->lock());
}

void ios::unlockBuffer() {
    if (buffer_ != nullptr) _mtunlock(buffer_->lock());
}

}  // namespace classic
