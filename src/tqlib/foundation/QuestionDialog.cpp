#include "tqlib/foundation/QuestionDialog.h"

#include "tqplatform/desktop/DialogTemplate.h"

namespace tqlib::detail {
namespace {

using tqplatform::ControlDescription;
using tqplatform::ControlKind;

constexpr std::uint16_t pictureResource = 101;  ///< an application's

// In tab order. Places are in dialog units.
constexpr ControlDescription controls[] = {
    {ControlKind::button, 922, {164, 40, 50, 14}, BS_DEFPUSHBUTTON | WS_TABSTOP, "&Nein"},
    {ControlKind::button, 923, {224, 40, 50, 14}, BS_PUSHBUTTON | WS_TABSTOP, "&Abbrechen"},
    {ControlKind::button, 920, {45, 40, 50, 14}, BS_PUSHBUTTON | WS_TABSTOP, "&Ja"},
    {ControlKind::button, 921, {105, 40, 50, 14}, BS_PUSHBUTTON | WS_TABSTOP, "Ja, &alle"},
    {ControlKind::text, pictureControl, {7, 7, 37, 23}, SS_BITMAP, "", pictureResource},
    {ControlKind::text,
     questionControl,
     {39, 9, 266, 23},
     SS_LEFT | WS_GROUP,
     "Die Datei xy existiert bereits!"},
};

constexpr auto dialog =
    tqplatform::dialogBytes<questionDialog.size()>({"Dialog", 0, {0, 0, 322, 61}, controls});
static_assert(dialog.size == questionDialog.size());

}  // namespace

constinit std::array<std::uint8_t, dialog.size> const questionDialog = dialog.bytes;

}  // namespace tqlib::detail
