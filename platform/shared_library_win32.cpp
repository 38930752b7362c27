// Shared libraries through LoadLibrary.
#include "platform/shared_library.h"

#include <stdexcept>
#include <system_error>

#include <windows.h>

namespace platform {

const char* const kLibraryEnding = ".dll";

SharedLibrary::SharedLibrary(const std::string& path) {
    // With a full path the system does not search, and the library finds its neighbours.
    char file[MAX_PATH] = {};
    const DWORD length = GetFullPathNameA(path.c_str(), MAX_PATH, file, nullptr);
    if (length == 0 || length >= MAX_PATH) throw std::runtime_error("the path is not valid");

    handle_ = LoadLibraryExA(file, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!handle_) {
        throw std::runtime_error(std::system_category().message(static_cast<int>(GetLastError())));
    }
}

SharedLibrary::~SharedLibrary() {
    FreeLibrary(static_cast<HMODULE>(handle_));
}

void* SharedLibrary::symbol(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

}  // namespace platform
