#pragma once

#include "tqlib/foundation/TQString.h"

namespace tqlib::detail {

/// The number by `format`, a format of printf for one double or int, without white space at its
/// ends. A format for anything else comes out as it stands.
TQString FormatDoubleText(double value, TQString format);
TQString FormatIntText(int value, TQString format);

/// The same, but that the format "SCIENTIFIC" stands for TQString::DoubleFormat().
TQString formatDouble(double value, TQString format);

}  // namespace tqlib::detail
