#include "tqlib/dialogs/DataExchange.h"

#include <clocale>
#include <cstdio>
#include <cstring>
#include <utility>

#include "tqlib/dialogs/Limits.h"
#include "tqlib/dialogs/NumberText.h"
#include "tqplatform/desktop/AfxMessageBox.h"
#include "tqplatform/desktop/CWnd.h"
#include "tqplatform/desktop/User.h"
#include "tqplatform/framework/ModuleState.h"

using tqlib::detail::formatDouble;
using tqlib::detail::FormatIntText;

namespace {

constexpr int readSize = 19;   ///< characters of a number that are read, with their NUL
constexpr int mostShown = 20;  ///< characters of a number that are shown
constexpr WPARAM wholeList = static_cast<WPARAM>(-1);

using NumberBuffer = char[readSize];

// Both give 0 for a text that begins with no number. One at whose end nothing was found counts as
// read, and the value stays.
int ReadDoubleText(HWND window, double *value) {
    NumberBuffer text;
    GetWindowTextA(window, text, readSize);
    char *const point = std::strchr(text, '.');
    if (point != nullptr && *std::localeconv()->decimal_point == ',') *point = ',';
    return std::sscanf(text, "%lf", value) != 0 ? 1 : 0;
}

int ReadIntText(HWND window, int *value) {
    NumberBuffer text;
    GetWindowTextA(window, text, readSize);
    char const *const number = text + std::strspn(text, " ");
    if (*number == '\0' && number != text) {
        *value = 0;
        return 1;
    }
    return std::sscanf(number, "%d", value) != 0 ? 1 : 0;
}

template <class Value>
void readOrFail(CDataExchange *dx, HWND window, Value &value, int (*read)(HWND, Value *)) {
    if (read(window, &value) != 0) return;
    AfxMessageBox(TQString(tqlib::detail::numberExpected), MB_ICONEXCLAMATION, 0);
    dx->Fail();
}

void show(HWND window, TQString const &text) {
    SetWindowTextA(window, text.Left(mostShown));
}

void WriteDoubleText(HWND window, double value, TQString format) {
    show(window, formatDouble(value, std::move(format)));
}

void WriteIntText(HWND window, int value, TQString format) {
    show(window, FormatIntText(value, std::move(format)));
}

void choose(HWND combo, TQString const &text) {
    auto const *const wanted = static_cast<char const *>(text);
    if (SendMessageA(combo, CB_SELECTSTRING, wholeList, reinterpret_cast<LPARAM>(wanted)) == CB_ERR)
        show(combo, text);
}

bool isSaving(CDataExchange const *dx) {
    return dx->m_bSaveAndValidate != 0;
}

template <class Value>
int judge(CDataExchange *dx, Value value, Value hardMin, Value hardMax, Value softMin,
          Value softMax) {
    if (!isSaving(dx)) return 1;
    auto const verdict = tqlib::detail::judge(value, hardMin, hardMax, softMin, softMax);
    if (verdict.message == 0) return 1;
    TQString message(verdict.message);
    MyDDVErrorMessage(dx, message, verdict.isError ? MB_ICONEXCLAMATION : MB_ICONINFORMATION);
    return verdict.isError ? 0 : 1;
}

template <class Value>
int isWithin(Value value, Value hardMin, Value hardMax, Value softMin, Value softMax) {
    bool const isUsual = softMin <= value && value <= softMax;
    return hardMin <= value && value <= hardMax && isUsual ? 1 : 0;
}

// True if the user keeps the value.
bool isAccepted(TQString const &message, unsigned int style) {
    if (style != MB_ICONEXCLAMATION)
        return AfxMessageBox(message, style | MB_OKCANCEL, 0) != IDCANCEL;
    AfxMessageBox(message, style, 0);
    return false;
}

}  // namespace

void DDX_Text(CDataExchange *dx, int id, double &value, TQString format) {
    HWND const window = dx->PrepareEditCtrl(id);
    if (isSaving(dx))
        readOrFail(dx, window, value, ReadDoubleText);
    else
        WriteDoubleText(window, value, std::move(format));
}

void DDX_Text(CDataExchange *dx, int id, int &value, TQString format) {
    HWND const window = dx->PrepareEditCtrl(id);
    if (isSaving(dx))
        readOrFail(dx, window, value, ReadIntText);
    else
        WriteIntText(window, value, std::move(format));
}

void DDX_Text(CDataExchange *dx, int id, TQString &value) {
    DDX_Text(dx, id, static_cast<CString &>(value));
    if (isSaving(dx)) value.Trim();
}

void DDX_CBString(CDataExchange *dx, int id, double &value, TQString format) {
    HWND const window = dx->PrepareCtrl(id);
    if (isSaving(dx))
        readOrFail(dx, window, value, ReadDoubleText);
    else
        choose(window, formatDouble(value, std::move(format)));
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the format has no effect
void DDX_CBString(CDataExchange *dx, int id, int &value, TQString /*format*/) {
    HWND const window = dx->PrepareCtrl(id);
    if (isSaving(dx))
        readOrFail(dx, window, value, ReadIntText);
    else
        choose(window, FormatIntText(value, "%d"));
}

int DDV_MyMinMaxDouble(CDataExchange *dx, double const &value, double hardMin, double hardMax,
                       double softMin, double softMax) {
    return judge(dx, value, hardMin, hardMax, softMin, softMax);
}

int DDV_MyMinMaxInt(CDataExchange *dx, int const &value, int hardMin, int hardMax, int softMin,
                    int softMax) {
    return judge(dx, value, hardMin, hardMax, softMin, softMax);
}

void MyDDVErrorMessage(CDataExchange *dx, TQString &message, unsigned int style) {
    if (!isSaving(dx)) return;
    bool const accepted = isAccepted(message, style);
    message.Empty();
    if (accepted) return;
    bool const isInMainWindow =
        AfxGetModuleState()->GetMainWnd() == CWnd::FromHandle(GetActiveWindow());
    if (!isInMainWindow) dx->Fail();
}

int MinMaxDouble(double const &value, double hardMin, double hardMax, double softMin,
                 double softMax) {
    return isWithin(value, hardMin, hardMax, softMin, softMax);
}

int MinMaxInt(int const &value, int hardMin, int hardMax, int softMin, int softMax) {
    return isWithin(value, hardMin, hardMax, softMin, softMax);
}
