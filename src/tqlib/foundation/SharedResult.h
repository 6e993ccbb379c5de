#pragma once

#include <utility>

namespace tqlib::detail {

/// A result that all objects of a class share. It is made when it is first asked for and released
/// when the library is unloaded: static objects of the host end before that, and may ask for it in
/// their destructors. Whoever has one releases it in a destructor function of the library.
template <typename Value>
class SharedResult {
  public:
    Value &get() {
        if (value_ == nullptr) value_ = new Value;
        return *value_;
    }

    void release() { delete std::exchange(value_, nullptr); }

  private:
    Value *value_ = nullptr;
};

}  // namespace tqlib::detail
