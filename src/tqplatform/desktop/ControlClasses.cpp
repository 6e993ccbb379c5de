#include "tqplatform/desktop/ControlClasses.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "tqplatform/desktop/Button.h"
#include "tqplatform/desktop/ComboBox.h"
#include "tqplatform/desktop/Dialog.h"
#include "tqplatform/desktop/EditControl.h"
#include "tqplatform/desktop/StaticControl.h"
#include "tqplatform/framework/ModuleState.h"

namespace tqplatform {
namespace {

template <class Kind>
std::shared_ptr<Window> make(WindowDescription const &description) {
    return std::make_shared<Kind>(description);
}

struct WindowClass {
    std::string_view name;
    std::shared_ptr<Window> (*make)(WindowDescription const &);
};
constexpr WindowClass classes[] = {
    {"EDIT", make<EditControl>},  {"BUTTON", make<Button>}, {"STATIC", make<StaticControl>},
    {"COMBOBOX", make<ComboBox>}, {"#32770", make<Dialog>},
};

bool sameName(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right,
                              [](char a, char b) { return toLower1252(a) == toLower1252(b); });
}

constexpr unsigned int staticKinds = 0x1F;

}  // namespace

HWND createWindow(std::string_view className, WindowDescription const &description) {
    auto const *const found = std::ranges::find_if(
        classes, [=](WindowClass const &one) { return sameName(one.name, className); });
    if (found == std::end(classes)) return nullptr;
    return Window::add(found->make(description));
}

HWND createControl(ControlTemplate const &control, RECT const &place, HWND dialog) {
    HWND const made = createWindow(
        control.className, {control.text, control.style | WS_CHILD, place, dialog, control.id});
    auto const picture = Window::findAs<StaticControl>(made);
    if (picture != nullptr && (control.style & staticKinds) == SS_BITMAP)
        picture->picture =
            AfxGetModuleState()->findResource(ResourceKind::bitmap, control.resource);
    return made;
}

}  // namespace tqplatform
