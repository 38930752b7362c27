// Finds skin folders.
#include "editor/skin_choice.h"

#include <algorithm>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/path_text.h"
#include "state/data_folder.h"

namespace editor {
namespace {

constexpr const char* kSkinFile = "skin.xml";
constexpr std::size_t kLongestName = 259;

}  // namespace

std::optional<std::string> SkinChoice::folder() const {
    if (!baseFolder) return std::nullopt;
    return *baseFolder + name + platform::kSeparator;
}

int SkinChoice::selected() const {
    const auto found = std::find(installed.begin(), installed.end(), name);
    return found == installed.end() ? -1 : static_cast<int>(found - installed.begin());
}

SkinChoice findSkins() {
    SkinChoice choice;
    choice.baseFolder = platform::resourceFolder();
    const auto stored = state::settings().read(state::kSkinNameSetting);
    choice.name = platform::pathFromUtf8(stored.value_or(kDefaultSkin));
    if (!choice.baseFolder) return choice;
    choice.isStored = stored && platform::fileExists(*choice.folder() + kSkinFile);
    if (!choice.isStored) choice.name = kDefaultSkin;

    for (const std::string& name : platform::folderEntries(*choice.baseFolder)) {
        if (name.size() > kLongestName) continue;
        const std::string file = *choice.baseFolder + name + platform::kSeparator + kSkinFile;
        if (platform::fileExists(file)) choice.installed.push_back(name);
    }
    return choice;
}

bool chooseSkin(const std::string& name) {
    return state::settings().write(state::kSkinNameSetting, platform::utf8FromPath(name));
}

}  // namespace editor
