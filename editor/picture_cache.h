// The pictures of one skin. Each file is read once, however many elements use it. An optional
// NAME#2.0x.png beside NAME.png holds the same picture in double size, for larger zooms.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "editor/skin/picture_files.h"
#include "editor/skin/skin_text.h"
#include "vstgui/vstgui.h"

namespace editor {

// Limit for all pictures of a skin together, double-size ones included: 128 MiB.
constexpr std::int64_t kMostSkinPixels = std::int64_t{32} << 20;

class PictureCache {
  public:
    // skinFolder ends in a separator.
    explicit PictureCache(const std::string& skinFolder, std::int64_t mostPixels = kMostSkinPixels)
        : files_(skinFolder), pixelsLeft_(mostPixels) {}

    // Returns the picture, or null if it cannot be read or needs more pixels than are left. Ignores
    // the case of the name. The cache keeps a reference, so the pointer lives as long as the cache.
    VSTGUI::CBitmap* find(const std::string& fileName);
    // Loads the double-size versions of all pictures found so far, as far as the pixels last. Only
    // the first call has an effect.
    void readDoubles();

  private:
    // Takes the pixels of a file from those that are left, and returns its path in UTF-8. Returns
    // nothing if there is no such picture, they do not suffice, or it does not have the wanted
    // size.
    std::optional<std::string> charge(const std::string& fileName,
                                      const std::optional<VSTGUI::CPoint>& wanted = std::nullopt);

    PictureFiles files_;
    std::int64_t pixelsLeft_;
    bool readsDoubles_ = false;
    std::map<std::string, VSTGUI::SharedPointer<VSTGUI::CBitmap>, LessIgnoringCase> pictures_;
};

}  // namespace editor
