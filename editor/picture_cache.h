// The pictures of one skin load, each read once however many elements name it. Beside NAME.png,
// NAME#2.0x.png may hold the same picture in double size, for larger views.
#pragma once

#include <map>
#include <string>

#include "editor/skin_text.h"
#include "vstgui/vstgui.h"

namespace editor {

class PictureCache {
  public:
    // skinFolder ends in a separator.
    explicit PictureCache(std::string skinFolder) : folder_(std::move(skinFolder)) {}

    // The picture of this file, names compared without regard to case, or null. It stays valid for
    // as long as the cache or somebody else holds it.
    VSTGUI::CBitmap* find(const std::string& fileName);

  private:
    std::string folder_;
    std::map<std::string, VSTGUI::SharedPointer<VSTGUI::CBitmap>, LessIgnoringCase> pictures_;
};

}  // namespace editor
