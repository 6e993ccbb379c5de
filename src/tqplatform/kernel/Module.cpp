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
