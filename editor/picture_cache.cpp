// Loads pictures through the view library.
#include "editor/picture_cache.h"

#include <algorithm>

#include "platform/path_text.h"
#include "vstgui/lib/platform/iplatformbitmap.h"
#include "vstgui/lib/platform/platformfactory.h"

namespace editor {
namespace {

constexpr double kDouble = 2;
constexpr const char* kDoubleSuffix = "#2.0x";

VSTGUI::PlatformBitmapPtr readPixels(const std::string& path) {
    const std::string utf8 = platform::utf8FromPath(path);
    return VSTGUI::getPlatformFactory().createBitmapFromPath(utf8.c_str());
}

std::string doubleName(const std::string& fileName) {
    const std::size_t end = std::min(fileName.rfind('.'), fileName.size());
    return fileName.substr(0, end) + kDoubleSuffix + fileName.substr(end);
}

}  // namespace

VSTGUI::SharedPointer<VSTGUI::CBitmap> PictureCache::load(const std::string& fileName) const {
    const auto pixels = readPixels(folder_ + fileName);
    if (!pixels) return nullptr;
    auto picture = VSTGUI::makeOwned<VSTGUI::CBitmap>(pixels);
    if (readsDoubles_) addDouble(*picture, fileName);
    return picture;
}

// One that is damaged or has another size is as good as none.
void PictureCache::addDouble(VSTGUI::CBitmap& picture, const std::string& fileName) const {
    const auto pixels = readPixels(folder_ + doubleName(fileName));
    const VSTGUI::CPoint size = picture.getSize();
    if (!pixels || pixels->getSize() != VSTGUI::CPoint(size.x * kDouble, size.y * kDouble)) return;
    pixels->setScaleFactor(kDouble);
    picture.addBitmap(pixels);
}

VSTGUI::CBitmap* PictureCache::find(const std::string& fileName) {
    const auto known = pictures_.find(fileName);
    if (known != pictures_.end()) return known->second.get();
    return pictures_.emplace(fileName, load(fileName)).first->second.get();
}

void PictureCache::readDoubles() {
    if (readsDoubles_) return;
    readsDoubles_ = true;
    for (const auto& [fileName, picture] : pictures_)
        if (picture) addDouble(*picture, fileName);
}

}  // namespace editor
