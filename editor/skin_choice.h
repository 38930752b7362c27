// The skins installed beside the library, and the one the user has chosen.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace editor {

constexpr const char* kDefaultSkin = "skin";

struct SkinChoice {
    std::optional<std::string> baseFolder;  // ends in a separator; nothing if unknown
    std::string name;                       // of the selected skin
    std::vector<std::string> installed;     // in file system order
    bool isStored = false;                  // the name comes from the settings

    // The folder of the selected skin. Ends in a separator; nothing if baseFolder is unknown.
    std::optional<std::string> folder() const;
    int selected() const;  // index of `name` in `installed`, or -1
};

// Looks beside the library and in the settings. Falls back to the default skin if the chosen one
// has no skin.xml.
SkinChoice findSkins();
bool chooseSkin(const std::string& name);  // false if the settings cannot be written

}  // namespace editor
