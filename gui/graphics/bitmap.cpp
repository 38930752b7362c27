// Pictures that views share, and the factory that loads them from a file.
#include "gui/graphics/bitmap.h"
#include "gui/graphics/draw_context.h"
#include "gui/graphics/picture_reader.h"

#include <algorithm>

namespace VSTGUI {

CBitmap::CBitmap(const PlatformBitmapPtr& picture) {
    if (picture) pictures_.push_back(picture);
}

CBitmap::CBitmap(CCoord width, CCoord height)
    : CBitmap(makeOwned<IPlatformBitmap>(PixelBuffer(nearestPixel(width), nearestPixel(height)))) {}

CPoint CBitmap::getSize() const {
    if (!isLoaded()) return {};
    const CPoint pixels = pictures_.front()->getSize();
    const double scale = pictures_.front()->getScaleFactor();
    return {pixels.x / scale, pixels.y / scale};
}

PlatformBitmapPtr CBitmap::getPlatformBitmap() const {
    return isLoaded() ? pictures_.front() : nullptr;
}

bool CBitmap::addBitmap(const PlatformBitmapPtr& picture) {
    const double scale = picture->getScaleFactor();
    const CPoint pixels = picture->getSize();
    if (CPoint(pixels.x / scale, pixels.y / scale) != getSize()) return false;
    const auto at = std::find_if(pictures_.begin(), pictures_.end(), [&](const auto& other) {
        return other->getScaleFactor() >= scale;
    });
    if (at != pictures_.end() && (*at)->getScaleFactor() == scale) return false;
    pictures_.insert(at, picture);
    return true;
}

PlatformBitmapPtr CBitmap::getBestPlatformBitmapForScaleFactor(double scaleFactor) const {
    for (const auto& picture : pictures_)
        if (picture->getScaleFactor() >= scaleFactor) return picture;
    return isLoaded() ? pictures_.back() : nullptr;
}

void CBitmap::draw(CDrawContext* context, const CRect& dest, const CPoint& offset, float alpha) {
    context->drawBitmap(this, dest, offset, alpha);
}

PlatformBitmapPtr IPlatformFactory::createBitmapFromPath(UTF8StringPtr absolutePath) const {
    if (!absolutePath) return {};
    auto pixels = readPictureFile(absolutePath);
    if (!pixels) return {};
    return makeOwned<IPlatformBitmap>(std::move(*pixels));
}

const IPlatformFactory& getPlatformFactory() {
    static const IPlatformFactory factory;
    return factory;
}

}  // namespace VSTGUI
