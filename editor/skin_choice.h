// The installed skins, and the one the user has chosen.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace editor {

constexpr const char* kDefaultSkin = "skin";

// Folders end in a separator.
struct Skin {
    std::string name;
    std::string folder;
};

struct SkinChoice {
    std::optional<std::string> baseFolder;  // of the skins beside the library; nothing if unknown
    std::string name;                       // of the selected skin
    std::vector<Skin> installed;            // beside the library, then the user's
    bool isStored = false;                  // the name comes from the settings

    // The folder of the selected skin. Nothing if baseFolder is unknown.
    std::optional<std::string> folder() const;
    int selected() const;  // index of `name` in `installed`, or -1
};

// Looks beside the library, in the folder "Skins" of the user's data folder, and in the settings.
// Skins beside the library hide those of the same name. Falls back to the default skin if the
// chosen one has no skin.xml.
SkinChoice findSkins();
bool chooseSkin(const std::string& name);  // false if the settings cannot be written

}  // namespace editor
