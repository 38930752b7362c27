// The handle of our own code from the dynamic linker.
#include "platform/module_handle.h"

#include <dlfcn.h>

namespace platform {

void* moduleHandle() {
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(&moduleHandle), &info) == 0) return nullptr;
    void* handle = dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    // The main program is not found by its name.
    if (!handle) handle = dlopen(nullptr, RTLD_LAZY);
    // The code that asks is loaded: the handle stays good without this reference to it.
    if (handle) dlclose(handle);
    return handle;
}

}  // namespace platform
