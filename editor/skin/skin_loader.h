// Reads a skin folder's skin.xml and hands its elements to the skin builder.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "editor/skin/skin_xml.h"

namespace editor {

constexpr std::size_t kMaxSkinFileBytes = 16u << 20;

// Called once per child of GUI, in document order. Names compare without regard to case.
using SkinBuilder =
    std::function<void(const std::string& element, const SkinAttributes& attributes)>;

enum class SkinElements { kAll, kBackgroundOnly };

enum class SkinLoad {
    kBuilt,
    kGuiMissing,  // the file was parsed but has no GUI element; the user was told
    kUnreadable,  // the file is missing, too long or does not parse; nothing was shown
};

// skinFolder ends in a separator. The tree that the attributes refer to lives until this returns.
SkinLoad loadSkin(const std::string& skinFolder, SkinElements elements, const SkinBuilder& build);

}  // namespace editor
