// Finds or creates the data folder.
#include "state/data_folder.h"

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/product.h"

namespace state {

namespace {

constexpr std::size_t kLongestPath = 255;

// intentional: an empty folder counts as missing, and creating it again fails
bool ensureFolder(const std::string& folder) {
    return platform::folderHasEntry(folder) || platform::createFolder(folder);
}

}  // namespace

platform::SettingsStore settings() {
    return {platform::kCompanyName, platform::kProductName};
}

std::optional<std::string> findDataFolder(const std::string& productName) {
    const auto base = platform::applicationDataFolder();
    if (!base) return std::nullopt;
    const std::string family = *base + platform::kSeparator + kHostFamilyFolder;
    const std::string folder = family + platform::kSeparator + productName;
    if (!ensureFolder(family) || !ensureFolder(folder)) return std::nullopt;
    return (folder + platform::kSeparator).substr(0, kLongestPath);
}

}  // namespace state
