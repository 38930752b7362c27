// Loads pictures through the view library.
#include "editor/picture_cache.h"

#include "platform/path_text.h"
#include "vstgui/lib/platform/iplatformbitmap.h"
#include "vstgui/lib/platform/platformfactory.h"

namespace editor {
namespace {

VSTGUI::SharedPointer<VSTGUI::CBitmap> loadPicture(const std::string& path) {
    const std::string utf8 = platform::utf8FromPath(path);
    const auto pixels = VSTGUI::getPlatformFactory().createBitmapFromPath(utf8.c_str());
    if (!pixels) return nullptr;
    return VSTGUI::makeOwned<VSTGUI::CBitmap>(pixels);
}

}  // namespace

VSTGUI::CBitmap* PictureCache::find(const std::string& fileName) {
    const auto known = pictures_.find(fileName);
    if (known != pictures_.end()) return known->second.get();
    return pictures_.emplace(fileName, loadPicture(folder_ + fileName)).first->second.get();
}

}  // namespace editor
