#include "tqlib/foundation/LibraryEntry.h"

#include <new>

#include "tqlib/foundation/Resources.h"
#include "tqplatform/framework/ModuleState.h"

namespace tqlib::detail {
namespace {

// Zero at load; the only state that the entry function touches.
constinit AFX_EXTENSION_MODULE extensionModule{};

int attach(HINSTANCE instance) {
    if (AfxInitExtensionModule(extensionModule, instance) == 0) return 0;
    // Belongs to the framework from here on. Without it the library works, but for its resources.
    [[maybe_unused]] auto *link = new (std::nothrow) CDynLinkLibrary(extensionModule, false);
    return 1;  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the framework's chain has it
}

int detach() {
    AfxTermExtensionModule(extensionModule, false);
    return 1;
}

[[gnu::constructor]] void onLoad() {
    libraryEntry(&libraryModule, DLL_PROCESS_ATTACH, nullptr);
}
[[gnu::destructor]] void onUnload() {
    libraryEntry(&libraryModule, DLL_PROCESS_DETACH, nullptr);
}

}  // namespace

extern "C" char const tqlibEntry = 0;

int libraryEntry(HINSTANCE instance, unsigned int reason, void * /*reserved*/) {
    switch (reason) {
        case DLL_PROCESS_ATTACH:
            return attach(instance);
        case DLL_PROCESS_DETACH:
            return detach();
        default:
            return 1;
    }
}

}  // namespace tqlib::detail
