#include "tqlib/foundation/Resources.h"

#include <string_view>

#include "tqlib/foundation/InformationBitmap.h"
#include "tqlib/foundation/QuestionDialog.h"
#include "tqlib/foundation/VersionBlock.h"

namespace tqlib::detail {
namespace {

using tqplatform::Resource;
using tqplatform::ResourceKind;

constexpr Resource text(StringId id, std::string_view value) {
    return {ResourceKind::string, id, value.data(), value.size()};
}

// \xDF is sharp s, \xF6 o with diaeresis, in Windows-1252.
constinit Resource const resources[] = {
    text(valueTooSmall, "Der eingegebene Wert ist zu klein!"),
    text(valueTooLarge, "Der eingegebene Wert ist zu gro\xDF!"),
    text(valueUnusuallySmall,
         "Der eingegebene Wert ist kleiner als im allgemeinen \xFC"
         "blich!\n"
         "Soll der eingegebene Wert beibehalten werden?"),
    text(valueUnusuallyLarge,
         "Der eingegebene Wert ist gr\xF6\xDF"
         "er als im allgemeinen \xFC"
         "blich!\n"
         "Soll der eingegebene Wert beibehalten werden?"),
    text(numberExpected, "Bitte geben Sie eine Zahl ein!"),
    text(yes, "Ja"),
    text(no, "Nein"),
    {ResourceKind::bitmap, informationBitmapResource, informationBitmap.data(),
     informationBitmap.size()},
    {ResourceKind::dialog, questionDialogResource, questionDialog.data(), questionDialog.size()},
    {ResourceKind::version, versionResource, versionBlock.data(), versionBlock.size()},
};

}  // namespace

constinit tqplatform::Module const libraryModule{"tqlib.DLL", resources};

}  // namespace tqlib::detail
