// The pictures of one skin, each read once however many elements name it. Beside NAME.png,
// NAME#2.0x.png may hold the same picture in double size, for larger views.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "editor/skin/picture_files.h"
#include "editor/skin/skin_text.h"
#include "vstgui/vstgui.h"

namespace editor {

// Of all pictures of a skin together, double ones included: 128 MiB.
constexpr std::int64_t kMostSkinPixels = std::int64_t{32} << 20;

class PictureCache {
  public:
    // skinFolder ends in a separator.
    explicit PictureCache(const std::string& skinFolder, std::int64_t mostPixels = kMostSkinPixels)
        : files_(skinFolder), pixelsLeft_(mostPixels) {}

    // The picture of this file, names compared without regard to case, or null, also when it would
    // take more pixels than are left. It stays valid for as long as the cache or somebody else
    // holds it.
    VSTGUI::CBitmap* find(const std::string& fileName);
    // Gives every picture found so far its double one, as far as the pixels left suffice.
    void readDoubles();

  private:
    // Null also when it is not of the wanted size.
    VSTGUI::PlatformBitmapPtr read(const std::string& fileName,
                                   const std::optional<VSTGUI::CPoint>& wanted = std::nullopt);
    void addDouble(VSTGUI::CBitmap& picture, const std::string& fileName);

    PictureFiles files_;
    std::int64_t pixelsLeft_;
    bool readsDoubles_ = false;
    std::map<std::string, VSTGUI::SharedPointer<VSTGUI::CBitmap>, LessIgnoringCase> pictures_;
};

}  // namespace editor
