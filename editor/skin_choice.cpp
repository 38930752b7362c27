// Finds skin folders.
#include "editor/skin_choice.h"

#include <algorithm>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/path_text.h"
#include "platform/product.h"
#include "state/data_folder.h"

namespace editor {
namespace {

constexpr const char* kSkinFile = "skin.xml";
constexpr const char* kUserSkinsFolder = "Skins";
constexpr std::size_t kLongestName = 259;

bool isSkin(const std::string& folder) {
    return platform::fileExists(folder + kSkinFile);
}

// In the order of the file system.
void addSkinsOf(const std::string& base, SkinChoice& choice) {
    const std::size_t known = choice.installed.size();
    for (const std::string& name : platform::folderEntries(base)) {
        const std::string folder = base + name + platform::kSeparator;
        if (name.size() > kLongestName || !isSkin(folder)) continue;
        const auto first = choice.installed.begin();
        const bool isHidden = std::any_of(first, first + static_cast<std::ptrdiff_t>(known),
                                          [&](const Skin& skin) { return skin.name == name; });
        if (!isHidden) choice.installed.push_back({name, folder});
    }
}

}  // namespace

std::optional<std::string> SkinChoice::folder() const {
    if (!baseFolder) return std::nullopt;
    const int index = selected();
    return index >= 0 ? installed[index].folder : *baseFolder + name + platform::kSeparator;
}

int SkinChoice::selected() const {
    const auto found = std::find_if(installed.begin(), installed.end(),
                                    [this](const Skin& skin) { return skin.name == name; });
    return found == installed.end() ? -1 : static_cast<int>(found - installed.begin());
}

SkinChoice findSkins() {
    SkinChoice choice;
    choice.baseFolder = platform::resourceFolder();
    const auto stored = state::settings().read(state::kSkinNameSetting);
    choice.name = platform::pathFromUtf8(stored.value_or(kDefaultSkin));
    if (!choice.baseFolder) return choice;
    addSkinsOf(*choice.baseFolder, choice);
    if (const auto data = state::findDataFolder(platform::kProductName)) {
        addSkinsOf(*data + kUserSkinsFolder + platform::kSeparator, choice);
    }
    choice.isStored = stored && isSkin(*choice.folder());
    if (!choice.isStored) choice.name = kDefaultSkin;
    return choice;
}

bool chooseSkin(const std::string& name) {
    return state::settings().write(state::kSkinNameSetting, platform::utf8FromPath(name));
}

}  // namespace editor
