// Folders from the Windows shell, as 8-bit paths.
#include "platform/folders.h"
#include "platform/system_folders.h"

#include <windows.h>

#include <shlobj.h>

namespace platform {
namespace {

// Windows replaces a character outside the 8-bit code page by a question mark, which no path can
// contain.
bool isRepresented(const char* path) {
    return std::string(path).find('?') == std::string::npos;
}

}  // namespace

std::string systemModulePath() {
    HMODULE module = nullptr;
    const auto inside = reinterpret_cast<const char*>(&systemModulePath);
    constexpr DWORD kByAddress =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    char path[MAX_PATH] = {};
    if (!GetModuleHandleExA(kByAddress, inside, &module)) return {};
    const DWORD length = GetModuleFileNameA(module, path, MAX_PATH);
    return length > 0 && length < MAX_PATH && isRepresented(path) ? path : std::string();
}

std::optional<std::string> systemApplicationDataFolder() {
    char path[MAX_PATH] = {};
    if (!SHGetSpecialFolderPathA(nullptr, path, CSIDL_APPDATA | CSIDL_FLAG_CREATE, TRUE) ||
        !isRepresented(path)) {
        return std::nullopt;
    }
    return path;
}

std::optional<std::string> homeFolder() {
    char path[MAX_PATH] = {};
    if (!SHGetSpecialFolderPathA(nullptr, path, CSIDL_PERSONAL, FALSE) || !isRepresented(path)) {
        return std::nullopt;
    }
    return path;
}

std::vector<std::string> rootFolders() {
    std::vector<std::string> roots;
    const DWORD drives = GetLogicalDrives();
    for (int drive = 0; drive < 26; ++drive) {
        if (drives >> drive & 1)
            roots.push_back(std::string(1, static_cast<char>('A' + drive)) + ":\\");
    }
    return roots;
}

}  // namespace platform
