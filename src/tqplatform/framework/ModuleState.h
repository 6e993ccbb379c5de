#pragma once

// The framework's record of the process: the registered classes, and the chain of modules in which
// resources are looked up.
//
// A host application adds resources of its own to the chain like this:
//
//     constexpr tqplatform::Resource resources[] = {
//         {tqplatform::ResourceKind::string, 2001, "Messwert", 8}};
//     constexpr tqplatform::Module module{"messwerk", resources};
//     AFX_EXTENSION_MODULE record{};
//
//     AfxInitExtensionModule(record, &module);
//     new CDynLinkLibrary(record, false);      // belongs to the framework
//     ...
//     AfxTermExtensionModule(record);

#include "tqplatform/framework/CObject.h"
#include "tqplatform/kernel/Module.h"
#include "tqplatform/runtime/Export.h"

class CWnd;

/// The framework's record of an extension module; all zero before AfxInitExtensionModule.
struct AFX_EXTENSION_MODULE {
    int bInitialized;   ///< not 0 once the record is in use
    HINSTANCE hModule;  ///< the module; not owned
};

/// A module's link in the chain. Made with new, it belongs to the framework, which deletes it in
/// AfxTermExtensionModule.
class TQPLATFORM_API CDynLinkLibrary : public CObject {
  public:
    /// Puts the module of `record` at the end of the chain, so that it doesn't hide resources of
    /// the modules before it. `systemLibrary` is for the framework's own modules and is not used.
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE &record, bool systemLibrary = false);

    /// Takes the link out of the chain.
    ~CDynLinkLibrary() override;

  private:
    friend struct AFX_MODULE_STATE;

    HINSTANCE module_;
    CDynLinkLibrary *next_ = nullptr;
};

/// The state of the process that the framework keeps. Not for use from several threads at a time.
struct TQPLATFORM_API AFX_MODULE_STATE {
    /// The first resource of `kind` with the number `id` along the chain, or null. Only modules
    /// that are linked are looked at, the one that was linked first ahead of the others.
    tqplatform::Resource const *findResource(tqplatform::ResourceKind kind, unsigned int id) const;

    /// The first module along the chain that has such a resource, or null.
    HINSTANCE findModule(tqplatform::ResourceKind kind, unsigned int id) const;

    /// The registered class named `name`, or null.
    CRuntimeClass const *findClass(char const *name) const;

    /// Adds `library` at the end of the chain; takes it out; deletes all links of `module`.
    void link(CDynLinkLibrary *library);
    void unlink(CDynLinkLibrary *library);
    void deleteLinks(HINSTANCE module);

    /// Takes a class out of the list of registered ones, if it is there.
    void forgetClass(CRuntimeClass *runtimeClass);

    /// The main window of the application, or null.
    CWnd *GetMainWnd() const { return mainWindow; }

    CDynLinkLibrary *libraries = nullptr;  ///< the chain
    CRuntimeClass *classes = nullptr;      ///< registered classes, the latest first
    CWnd *mainWindow = nullptr;            ///< the application's, which sets it
};

/// The process's module state.
TQPLATFORM_API AFX_MODULE_STATE *AfxGetModuleState();

/// The first module along the chain that has the resource `id` of a kind, or null.
TQPLATFORM_API HINSTANCE AfxFindResourceHandle(unsigned int id, unsigned int kind);

/// Initialises `record` for `module`. The result is 1, or 0 if `module` is null: the record is
/// untouched then and the module can't be used. A record that is initialised already stays so.
TQPLATFORM_API int AfxInitExtensionModule(AFX_EXTENSION_MODULE &record, HINSTANCE module);

/// Undoes AfxInitExtensionModule and deletes the module's links in the chain. `all` is accepted for
/// the platform's sake: links are never shared between modules. Does nothing with an unused record.
TQPLATFORM_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE &record, bool all = false);

/// Registers a class, once, so that objects of it can be read from an archive. The record is static
/// and not null; a module that is unloaded forgets its classes, see AFX_MODULE_STATE.
TQPLATFORM_API void AfxClassInit(CRuntimeClass *runtimeClass);
