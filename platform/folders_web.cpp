// Folders in the memory of the page, which fills them before the instrument starts.
#include "platform/folders.h"
#include "platform/system_folders.h"

#include <sys/stat.h>

namespace platform {

std::string systemModulePath() {
    return "/quarzel/strings";
}

std::optional<std::string> systemApplicationDataFolder() {
    constexpr const char* kFolder = "/settings";
    struct stat status = {};
    if (stat(kFolder, &status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
    return kFolder;
}

// The only files are the page's own: see file_exchange.h for the others.
std::optional<std::string> homeFolder() {
    return systemApplicationDataFolder();
}

std::vector<std::string> rootFolders() {
    return {"/"};
}

}  // namespace platform
