// The pictures of one skin, each read once however many elements name it. Beside NAME.png,
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
    // From now on every picture gets its double one, those found before included.
    void readDoubles();

  private:
    VSTGUI::SharedPointer<VSTGUI::CBitmap> load(const std::string& fileName) const;
    void addDouble(VSTGUI::CBitmap& picture, const std::string& fileName) const;

    std::string folder_;
    bool readsDoubles_ = false;
    std::map<std::string, VSTGUI::SharedPointer<VSTGUI::CBitmap>, LessIgnoringCase> pictures_;
};

}  // namespace editor
