// Loads pictures through the view library.
#include "editor/picture_cache.h"

#include <algorithm>
#include <atomic>
#include <vector>

#include "platform/file.h"
#include "platform/path_text.h"
#include "platform/png_header.h"
#include "platform/two_threads.h"
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

VSTGUI::PlatformBitmapPtr readPicture(const std::string& path) {
    return VSTGUI::getPlatformFactory().createBitmapFromPath(path.c_str());
}

}  // namespace

// The file header tells the pixel count before the pixels take memory. A damaged picture is charged
// the same.
std::optional<std::string> PictureCache::charge(const std::string& fileName,
                                                const std::optional<VSTGUI::CPoint>& wanted) {
    const auto path = files_.find(fileName);
    if (!path) return std::nullopt;
    const auto start = platform::readFileStart(*path, platform::kPngHeaderBytes);
    const auto size = platform::readPngSize(start.value_or(""));
    if (!size || size->width == 0 || size->height > pixelsLeft_ / size->width) return std::nullopt;

    if (wanted && *wanted != VSTGUI::CPoint(size->width, size->height)) return std::nullopt;
    pixelsLeft_ -= std::int64_t{size->width} * size->height;
    return platform::utf8FromPath(*path);
}

VSTGUI::CBitmap* PictureCache::find(const std::string& fileName) {
    const auto [at, isNew] = pictures_.try_emplace(normalizedName(fileName));
    if (!isNew) return at->second.get();
    const auto path = charge(fileName);
    if (const auto pixels = path ? readPicture(*path) : nullptr) {
        at->second = VSTGUI::makeOwned<VSTGUI::CBitmap>(pixels);
    }
    return at->second.get();
}

// The background takes about as long as all others together, so two threads share the work.
void PictureCache::readDoubles() {
    if (readsDoubles_) return;
    readsDoubles_ = true;
    struct Double {
        VSTGUI::CBitmap& picture;
        std::string path;
        VSTGUI::PlatformBitmapPtr pixels;
    };
    std::vector<Double> doubles;
    for (const auto& [fileName, picture] : pictures_) {
        if (!picture) continue;
        const VSTGUI::CPoint size = picture->getSize();
        const auto path =
            charge(doubleName(fileName), VSTGUI::CPoint(size.x * kDouble, size.y * kDouble));
        if (path) doubles.push_back({*picture, *path, nullptr});
    }
    std::atomic<std::size_t> next{0};
    platform::inTwoThreads([&] {
        for (std::size_t i = next++; i < doubles.size(); i = next++)
            doubles[i].pixels = readPicture(doubles[i].path);
    });
    for (const Double& row : doubles) {
        if (!row.pixels) continue;  // damaged
        row.pixels->setScaleFactor(kDouble);
        row.picture.addBitmap(row.pixels);
    }
}

}  // namespace editor
