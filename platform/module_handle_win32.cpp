// The handle of our own code from the Windows loader.
#include "platform/module_handle.h"

#include <windows.h>

namespace platform {

void* moduleHandle() {
    HMODULE module = nullptr;
    const auto inside = reinterpret_cast<const char*>(&moduleHandle);
    constexpr DWORD kByAddress =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    return GetModuleHandleExA(kByAddress, inside, &module) ? module : nullptr;
}

}  // namespace platform
