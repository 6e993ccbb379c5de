#include "tqplatform/framework/ModuleState.h"

#include <cstring>
#include <utility>

namespace {

constinit AFX_MODULE_STATE moduleState;

// Takes `node` out of the list that begins with `first`, if it is there.
template <typename Node>
void takeOut(Node *&first, Node *Node::*next, Node const *node) {
    Node **place = &first;
    while (*place != nullptr && *place != node)
        place = &((*place)->*next);
    if (*place != nullptr) *place = node->*next;
}

}  // namespace

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE &record, bool /*systemLibrary*/)
    : module_(record.hModule) {
    AfxGetModuleState()->link(this);
}

CDynLinkLibrary::~CDynLinkLibrary() {
    AfxGetModuleState()->unlink(this);
}

HINSTANCE AFX_MODULE_STATE::findModule(tqplatform::ResourceKind kind, unsigned int id) const {
    for (CDynLinkLibrary const *library = libraries; library != nullptr; library = library->next_) {
        HINSTANCE const module = library->module_;
        if (module != nullptr && tqplatform::findResource(*module, kind, id) != nullptr)
            return module;
    }
    return nullptr;
}

tqplatform::Resource const *AFX_MODULE_STATE::findResource(tqplatform::ResourceKind kind,
                                                           unsigned int id) const {
    HINSTANCE const module = findModule(kind, id);
    return module == nullptr ? nullptr : tqplatform::findResource(*module, kind, id);
}

CRuntimeClass const *AFX_MODULE_STATE::findClass(char const *name) const {
    CRuntimeClass const *record = classes;
    while (record != nullptr && std::strcmp(record->className, name) != 0)
        record = record->nextClass;
    return record;
}

void AFX_MODULE_STATE::link(CDynLinkLibrary *library) {
    CDynLinkLibrary **place = &libraries;
    while (*place != nullptr)
        place = &(*place)->next_;
    *place = library;
}

void AFX_MODULE_STATE::unlink(CDynLinkLibrary *library) {
    takeOut(libraries, &CDynLinkLibrary::next_, library);
}

void AFX_MODULE_STATE::deleteLinks(HINSTANCE module) {
    CDynLinkLibrary *library = libraries;
    while (library != nullptr) {
        CDynLinkLibrary *const next = library->next_;
        if (library->module_ == module) delete library;
        library = next;
    }
}

void AFX_MODULE_STATE::forgetClass(CRuntimeClass *runtimeClass) {
    takeOut(classes, &CRuntimeClass::nextClass, runtimeClass);
}

AFX_MODULE_STATE *AfxGetModuleState() {
    return &moduleState;
}

HINSTANCE AfxFindResourceHandle(unsigned int id, unsigned int kind) {
    return moduleState.findModule(static_cast<tqplatform::ResourceKind>(kind), id);
}

int AfxInitExtensionModule(AFX_EXTENSION_MODULE &record, HINSTANCE module) {
    if (module == nullptr) return 0;
    if (record.bInitialized == 0) record = {1, module};
    return 1;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE &record, bool /*all*/) {
    if (record.bInitialized == 0) return;
    AfxGetModuleState()->deleteLinks(record.hModule);
    record = {};
}

void AfxClassInit(CRuntimeClass *runtimeClass) {
    auto *const state = AfxGetModuleState();
    if (state->findClass(runtimeClass->className) != nullptr) return;
    runtimeClass->nextClass = std::exchange(state->classes, runtimeClass);
}
