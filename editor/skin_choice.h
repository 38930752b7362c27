// Which skins are installed beside the library, and which of them the user has chosen.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace editor {

constexpr const char* kDefaultSkin = "skin";

struct SkinChoice {
    std::optional<std::string> baseFolder;  // ends in a separator; nothing when it is unknown
    std::string name;                       // of the selected skin
    std::vector<std::string> installed;     // in the order of the file system
    bool isStored = false;                  // the name comes from the settings

    // Of the selected skin; ends in a separator. Nothing beside an unknown folder.
    std::optional<std::string> folder() const;
    int selected() const;  // index of the name in the list, or -1
};

// Looks beside the library and in the settings. A chosen skin without skin.xml gives the default.
SkinChoice findSkins();
bool chooseSkin(const std::string& name);  // false when it cannot be kept

}  // namespace editor
