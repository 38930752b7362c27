// Folders by the conventions of Linux desktops.
#include "platform/folders.h"
#include "platform/system_folders.h"

#include <cstdlib>

#include <dlfcn.h>
#include <limits.h>
#include <link.h>
#include <sys/stat.h>

namespace platform {

std::string systemModulePath() {
    Dl_info info = {};
    link_map* loaded = nullptr;
    void* const place = &loaded;
    const void* const inside = reinterpret_cast<const void*>(&systemModulePath);
    if (!dladdr1(inside, &info, static_cast<void**>(place), RTLD_DL_LINKMAP)) return {};
    // The main program has no name here. A library's path may no longer exist.
    const char* const name = loaded->l_name[0] ? loaded->l_name : "/proc/self/exe";
    char path[PATH_MAX];
    return realpath(name, path) ? path : std::string();
}

// Also makes the parents. Only the user gets access, as desktops require.
void makeFolders(const std::string& folder) {
    for (std::size_t end = 0; end != std::string::npos;) {
        end = folder.find('/', end + 1);
        mkdir(folder.substr(0, end).c_str(), 0700);
    }
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
    makeFolders(folder);
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
    return folder;
}

std::optional<std::string> homeFolder() {
    const char* const home = std::getenv("HOME");
    if (!home || home[0] != '/') return std::nullopt;
    return home;
}

std::vector<std::string> rootFolders() {
    return {"/"};
}

}  // namespace platform
