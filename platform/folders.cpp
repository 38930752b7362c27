// Chooses between the system's folders and a test's.
#include "platform/folders.h"

#include <algorithm>
#include <utility>

#include "platform/file.h"
#include "platform/system_folders.h"

namespace platform {
namespace {

struct Folders {
    std::string module;
    std::string applicationData;
};
std::optional<Folders> replacement;
std::string resourcesFromModule;

}  // namespace

std::optional<std::string> moduleFolder() {
    const std::string path = systemModulePath();
    const std::string folder =
        replacement ? replacement->module : path.substr(0, path.rfind(kSeparator) + 1);
    if (folder.empty()) return std::nullopt;
    return folder;
}

std::optional<std::string> resourceFolder() {
    const auto folder = moduleFolder();
    if (!folder || replacement) return folder;
    return *folder + resourcesFromModule;
}

void setResourceFolder(const char* fromModule) {
    resourcesFromModule = fromModule;
    std::replace(resourcesFromModule.begin(), resourcesFromModule.end(), '/', kSeparator);
}

std::optional<std::string> applicationDataFolder() {
    if (!replacement) return systemApplicationDataFolder();
    if (replacement->applicationData.empty()) return std::nullopt;
    return replacement->applicationData;
}

ScopedFolders::ScopedFolders(std::string module, std::string applicationData) {
    replacement = Folders{std::move(module), std::move(applicationData)};
}

ScopedFolders::~ScopedFolders() {
    replacement.reset();
}

}  // namespace platform
