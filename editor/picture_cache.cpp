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

// A double picture that is damaged or has another size is as good as none.
VSTGUI::SharedPointer<VSTGUI::CBitmap> loadPicture(const std::string& folder,
                                                   const std::string& fileName) {
    const auto pixels = readPixels(folder + fileName);
    if (!pixels) return nullptr;
    auto picture = VSTGUI::makeOwned<VSTGUI::CBitmap>(pixels);
    const auto twice = readPixels(folder + doubleName(fileName));
    const VSTGUI::CPoint size = picture->getSize();
    if (!twice || twice->getSize() != VSTGUI::CPoint(size.x * kDouble, size.y * kDouble))
        return picture;
    twice->setScaleFactor(kDouble);
    picture->addBitmap(twice);
    return picture;
}

}  // namespace

VSTGUI::CBitmap* PictureCache::find(const std::string& fileName) {
    const auto known = pictures_.find(fileName);
    if (known != pictures_.end()) return known->second.get();
    return pictures_.emplace(fileName, loadPicture(folder_, fileName)).first->second.get();
}

}  // namespace editor
