// Reads the skin.xml of a folder and passes its elements to the skin builder.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "editor/skin/skin_xml.h"

namespace editor {

constexpr std::size_t kMaxSkinFileBytes = 16u << 20;

// Called for each child of GUI, in document order. Element names ignore case.
using SkinBuilder =
    std::function<void(const std::string& element, const SkinAttributes& attributes)>;

enum class SkinElements { kAll, kBackgroundOnly };

enum class SkinLoad {
    kBuilt,
    kGuiMissing,  // the file parses but has no GUI element; the user has been told
    kUnreadable,  // the file is missing, too long or malformed; the user has not been told
};

// skinFolder ends in a separator. The attributes are valid until this returns.
SkinLoad loadSkin(const std::string& skinFolder, SkinElements elements, const SkinBuilder& build);

}  // namespace editor
