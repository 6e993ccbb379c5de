#include "tqlib/calc/TQRandom.h"

#include <ctime>

TQRandom::TQRandom() : TQRandom(static_cast<unsigned int>(std::time(nullptr))) {}

TQRandom::TQRandom(double maximum) : TQRandom() {
    maximum_ = maximum;
}

TQRandom::TQRandom(unsigned int seed) {
    this->seed(seed);
}
