#include "tqplatform/kernel/Module.h"

#include <algorithm>

namespace tqplatform {

Resource const *findResource(Module const &module, ResourceKind kind, unsigned int id) {
    auto const found = std::ranges::find_if(module.resources, [=](Resource const &resource) {
        return resource.kind == kind && resource.id == id;
    });
    return found == module.resources.end() ? nullptr : &*found;
}

}  // namespace tqplatform

HRSRC FindResourceA(HINSTANCE module, unsigned int id, unsigned int kind) {
    if (module == nullptr) return nullptr;
    return tqplatform::findResource(*module, static_cast<tqplatform::ResourceKind>(kind), id);
}

void const *LoadResource(HINSTANCE /*module*/, HRSRC resource) {
    return resource == nullptr ? nullptr : resource->data;
}

std::size_t SizeofResource(HINSTANCE /*module*/, HRSRC resource) {
    return resource == nullptr ? 0 : resource->size;
}
