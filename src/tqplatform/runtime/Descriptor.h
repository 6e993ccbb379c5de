#pragma once

#include <utility>

#include "tqplatform/runtime/SystemCalls.h"

namespace tqplatform {

/// Owns the descriptor of an open file, or none, and closes it in the end.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept {
        if (this != &other) {
            close();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }
    ~Descriptor() { close(); }

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

    /// Closes the file; false if the system reports an error that came late. True without a file.
    bool close() { return number_ < 0 || systemCalls.close(std::exchange(number_, -1)) == 0; }

  private:
    int number_ = -1;
};

}  // namespace tqplatform
