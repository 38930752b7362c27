// Folders by the conventions of Linux desktops.
#include "platform/system_folders.h"

#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <limits.h>
#include <sys/stat.h>

namespace platform {

std::string systemModulePath() {
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(&systemModulePath), &info) == 0) return {};
    char path[PATH_MAX];
    // A program started through PATH is known by its bare name, which any file may have.
    const bool isPath = info.dli_fname && std::strchr(info.dli_fname, '/');
    if (isPath && realpath(info.dli_fname, path)) return path;
    return realpath("/proc/self/exe", path) ? path : std::string();
}

std::optional<std::string> systemApplicationDataFolder() {
    const char* const config = std::getenv("XDG_CONFIG_HOME");
    std::string folder;
    if (config && config[0] == '/') {
        folder = config;
    } else {
        const char* const home = std::getenv("HOME");
        if (!home || home[0] != '/') return std::nullopt;
        folder = std::string(home) + "/.config";
    }
    mkdir(folder.c_str(), 0700);
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
    return folder;
}

}  // namespace platform
