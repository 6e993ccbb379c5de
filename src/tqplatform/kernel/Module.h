#pragma once

// Modules: the program and the shared libraries of a process, each with the resources that it
// carries.

#include <cstddef>
#include <span>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// Kinds of resources, numbered as in a program file's resource directory.
enum class ResourceKind : unsigned int { bitmap = 2, dialog = 5, string = 6, version = 16 };

/// One resource of a module. `data` points at `size` bytes that live as long as the module: for a
/// string its text in Windows-1252 without terminator, for the other kinds the bytes of the
/// resource as they stand in a program file.
struct Resource {
    ResourceKind kind;
    unsigned int id;
    void const *data;
    std::size_t size;
};

/// A module: its file name and the table of its resources. Both live as long as the module.
struct Module {
    char const *name;
    std::span<Resource const> resources;
};

/// The resource of `kind` with the number `id` in `module`, or null if it has none. Takes a walk of
/// the module's table.
TQPLATFORM_API Resource const *findResource(Module const &module, ResourceKind kind,
                                            unsigned int id);

}  // namespace tqplatform

/// The handle of a module.
using HINSTANCE = tqplatform::Module const *;

/// The handle of a resource; null is none.
using HRSRC = tqplatform::Resource const *;

/// The number of the bitmaps among the kinds of resources.
inline constexpr unsigned int RT_BITMAP = 2;

/// The resource of `kind` with the number `id` in `module`, or null.
TQPLATFORM_API HRSRC FindResourceA(HINSTANCE module, unsigned int id, unsigned int kind);

/// The bytes of a resource, which live as long as the module, and their number; null and 0 for
/// null.
TQPLATFORM_API void const *LoadResource(HINSTANCE module, HRSRC resource);
TQPLATFORM_API std::size_t SizeofResource(HINSTANCE module, HRSRC resource);

/// Reasons for which a module's entry function is called.
inline constexpr unsigned int DLL_PROCESS_DETACH = 0;
inline constexpr unsigned int DLL_PROCESS_ATTACH = 1;
inline constexpr unsigned int DLL_THREAD_ATTACH = 2;
inline constexpr unsigned int DLL_THREAD_DETACH = 3;
