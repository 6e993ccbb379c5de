#pragma once

// Random numbers between two bounds.
//
//     TQRandom dice(5u);                  // a seed: 0 to 1
//     dice.maximum(6.0);
//     double const number = dice.random();
//
// All objects draw from one generator: making or seeding one of them seeds it for all, and two that
// are made within a second draw the same numbers.

#include "tqlib/foundation/Export.h"
#include "tqplatform/runtime/Random.h"

/// Two bounds of random numbers, which may also be equal or the greater one first.
class TQLIB_API TQRandom {
  public:
    /// Bounds 0 and 1, or 0 and `maximum`; the present second is the seed.
    TQRandom();
    TQRandom(double maximum);

    /// Bounds 0 and 1, with a seed.
    TQRandom(unsigned int seed);

    /// The next number, one of 32768 in equal steps from the lower bound to the upper one, both
    /// included.
    double random() {
        // Rounded on its own in a host, too, whose processor multiplies and adds in one step.
        double const volatile distance = tqplatform::rand() * (maximum_ - minimum_) * scale;
        return distance + minimum_;
    }

    /// Set a bound.
    void minimum(double minimum) { minimum_ = minimum; }
    void maximum(double maximum) { maximum_ = maximum; }

    /// Starts the sequence of `seed`, for all objects.
    void seed(unsigned int seed) { tqplatform::srand(seed); }

  private:
    static constexpr double scale = 1.0 / tqplatform::randomMaximum;

    double minimum_ = 0.0;
    double maximum_ = 1.0;
};
