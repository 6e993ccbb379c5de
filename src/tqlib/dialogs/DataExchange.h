#pragma once

// Functions for the DoDataExchange() of dialogs: DDX_ functions move a number or a text between a
// control and a variable, DDV_ functions judge a number against limits.
//
//     void Settings::DoDataExchange(CDataExchange *dx) {
//         DDX_Text(dx, 101, width_, "%.2f");
//         DDV_MyMinMaxDouble(dx, width_, 0, 100, 10, 90);   // beyond 10 to 90 the user is asked
//     }
//
// A `format` is one of printf for a single value; for a double it may also be "SCIENTIFIC", which
// stands for TQString::DoubleFormat(). The text of a number is at most 20 characters long where it
// is shown, and 18 where it is read. Failures leave the exchange by CDataExchange::Fail() after a
// message.

#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"
#include "tqplatform/desktop/CDataExchange.h"

/// Move a number between an edit control and `value`. A point is read as the locale's decimal
/// comma. An empty text leaves `value` as it is; one of blanks makes an int 0; one that begins with
/// no number fails.
TQLIB_API void DDX_Text(CDataExchange *dx, int id, double &value, TQString format);
TQLIB_API void DDX_Text(CDataExchange *dx, int id, int &value, TQString format);

/// Moves a text, which loses the white space at its ends on its way to `value`.
TQLIB_API void DDX_Text(CDataExchange *dx, int id, TQString &value);

/// Move a number between a combo box and `value`. The first item that begins with the number's text
/// is selected; without one the text goes into the field. An int is always shown by "%d".
TQLIB_API void DDX_CBString(CDataExchange *dx, int id, double &value, TQString format);
TQLIB_API void DDX_CBString(CDataExchange *dx, int id, int &value, TQString format);

/// Judge a number that is being saved; one that is being shown is always good. Beyond a hard limit
/// it fails, beyond a soft one the user may accept it. The result is 1, or 0 after an error during
/// an exchange in the application's main window, where nothing fails.
TQLIB_API int DDV_MyMinMaxDouble(CDataExchange *dx, double const &value, double hardMin,
                                 double hardMax, double softMin, double softMax);
TQLIB_API int DDV_MyMinMaxInt(CDataExchange *dx, int const &value, int hardMin, int hardMax,
                              int softMin, int softMax);

/// Shows a message while data is being saved: an error for the style MB_ICONEXCLAMATION, else a
/// question with OK and Cancel. `message` is empty afterwards. After an error or Cancel the
/// exchange fails, unless the application's main window is the active one, or there is neither a
/// main window nor an active one.
TQLIB_API void MyDDVErrorMessage(CDataExchange *dx, TQString &message, unsigned int style);

/// 1 for a number within all limits, else 0.
TQLIB_API int MinMaxDouble(double const &value, double hardMin, double hardMax, double softMin,
                           double softMax);
TQLIB_API int MinMaxInt(int const &value, int hardMin, int hardMax, int softMin, int softMax);
