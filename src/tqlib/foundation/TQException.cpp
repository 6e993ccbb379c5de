#include "tqlib/foundation/TQException.h"

TQException &TQException::operator=(TQException const & /*other*/) {
    return *this;
}
