// Dialogs from unknown resources: read, made, gone through by keys, drawn on small screens, and
// ended. A part of a template that can be read is never taken for a whole one.

#include "tqplatform/desktop/DialogTemplate.h"

#include <cstdint>
#include <span>

#include "support/Check.h"
#include "tqplatform/desktop/Dialog.h"
#include "tqplatform/desktop/TextView.h"

namespace {

constexpr std::size_t mostControls = 300;

std::size_t sizeOf(tqplatform::DialogTemplate const &dialog) {
    return dialog.title.size() + dialog.controls.size();
}

void walk(HWND dialog, std::uint8_t seed) {
    constexpr unsigned int keys[] = {VK_TAB, VK_DOWN, VK_LEFT, VK_RETURN, VK_ESCAPE};
    for (unsigned int const key : keys) {
        auto const target = [=] { return GetFocus() == nullptr ? dialog : GetFocus(); };
        MSG const message{target(), WM_KEYDOWN, key, 1};
        IsDialogMessage(dialog, &message);
        MSG const letter{target(), WM_SYSCHAR, seed, 1};
        IsDialogMessage(dialog, &letter);
        tqplatform::TextScreen screen(seed % 30, seed % 90, seed % 2 == 0);
        tqplatform::drawDialog(screen, dialog);
        screen.bytes();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    std::span<std::uint8_t const> const bytes(data, size);
    auto const dialog = tqplatform::readDialogTemplate(bytes);
    if (!dialog) return 0;
    auto const part = tqplatform::readDialogTemplate(bytes.first(size / 2));
    if (part && sizeOf(*part) > sizeOf(*dialog))
        disagree("a part", shown(sizeOf(*part)), shown(sizeOf(*dialog)));
    if (dialog->controls.size() > mostControls) return 0;
    HWND const window = tqplatform::createDialog(*dialog, nullptr);
    if (window == nullptr) return 0;
    walk(window, data[size - 1]);
    expectSame("end", DestroyWindow(window), 1);
    expectSame("end again", DestroyWindow(window), 0);
    return 0;
}
