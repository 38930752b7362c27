// Loads pictures through the view library.
#include "editor/picture_cache.h"

#include <algorithm>

#include "platform/file.h"
#include "platform/path_text.h"
#include "platform/png_header.h"
#include "vstgui/lib/platform/iplatformbitmap.h"
#include "vstgui/lib/platform/platformfactory.h"

namespace editor {
namespace {

constexpr double kDouble = 2;
constexpr const char* kDoubleSuffix = "#2.0x";

std::string doubleName(const std::string& fileName) {
    const std::size_t end = std::min(fileName.rfind('.'), fileName.size());
    return fileName.substr(0, end) + kDoubleSuffix + fileName.substr(end);
}

}  // namespace

// The file header tells the pixel count before the pixels take memory. A damaged picture is charged
// the same.
VSTGUI::PlatformBitmapPtr PictureCache::read(const std::string& fileName,
                                             const std::optional<VSTGUI::CPoint>& wanted) {
    const auto path = files_.find(fileName);
    if (!path) return nullptr;
    const auto start = platform::readFileStart(*path, platform::kPngHeaderBytes);
    const auto size = platform::readPngSize(start.value_or(""));
    if (!size || size->width == 0 || size->height > pixelsLeft_ / size->width) return nullptr;

    if (wanted && *wanted != VSTGUI::CPoint(size->width, size->height)) return nullptr;
    pixelsLeft_ -= std::int64_t{size->width} * size->height;
    const std::string utf8 = platform::utf8FromPath(*path);
    return VSTGUI::getPlatformFactory().createBitmapFromPath(utf8.c_str());
}

// Ignores a double-size picture that is damaged or has the wrong size.
void PictureCache::addDouble(VSTGUI::CBitmap& picture, const std::string& fileName) {
    const VSTGUI::CPoint size = picture.getSize();
    const auto pixels =
        read(doubleName(fileName), VSTGUI::CPoint(size.x * kDouble, size.y * kDouble));
    if (!pixels) return;
    pixels->setScaleFactor(kDouble);
    picture.addBitmap(pixels);
}

VSTGUI::CBitmap* PictureCache::find(const std::string& fileName) {
    const auto [at, isNew] = pictures_.try_emplace(normalizedName(fileName));
    if (!isNew) return at->second.get();
    if (const auto pixels = read(fileName)) {
        at->second = VSTGUI::makeOwned<VSTGUI::CBitmap>(pixels);
    }
    return at->second.get();
}

void PictureCache::readDoubles() {
    if (readsDoubles_) return;
    readsDoubles_ = true;
    for (const auto& [fileName, picture] : pictures_)
        if (picture) addDouble(*picture, fileName);
}

}  // namespace editor
