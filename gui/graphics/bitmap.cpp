// Pictures that views share, and the factory that loads them from a file.
#include "gui/graphics/bitmap.h"
#include "gui/graphics/draw_context.h"
#include "gui/graphics/picture_reader.h"

namespace VSTGUI {

CBitmap::CBitmap(CCoord width, CCoord height)
    : CBitmap(makeOwned<IPlatformBitmap>(PixelBuffer(nearestPixel(width), nearestPixel(height)))) {}

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
