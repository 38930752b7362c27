#include "gui/views/kept_background.h"
#include "gui/graphics/scale.h"

#include <algorithm>
#include <utility>

namespace VSTGUI {
namespace {

constexpr size_t kMostParts = 8;
constexpr int kMostPixels = 1 << 17;  // of a part

bool contains(const IntRect& outer, const IntRect& inner) {
    return outer.common(inner) == inner;
}

}  // namespace

void KeptBackground::keep(const IntRect& view) {
    if (view.isEmpty() || view.height() > kMostPixels / view.width()) return;
    const auto isThat = [&](const Part& part) { return contains(part.place, view); };
    if (std::any_of(parts_.begin(), parts_.end(), isThat)) return;
    if (parts_.size() == kMostParts) parts_.erase(parts_.begin());
    parts_.push_back({view, {}});
}

bool KeptBackground::draw(CDrawContext& context, const CBitmap& picture, const CPoint& frameSize,
                          double zoom) {
    const IntRect& area = context.area();
    const auto holds = [&](const Part& one) {
        return contains(one.place, area) && !(one.place == area);
    };
    const auto part = std::find_if(parts_.begin(), parts_.end(), holds);
    if (part == parts_.end()) return false;
    const auto best = picture.getBestPlatformBitmapForScaleFactor(zoom);
    const double scale = best->getScaleFactor();
    if (scale == zoom) return false;
    const PictureRows& rows = best->pixels();
    if (std::exchange(picture_, &rows) != &rows) {
        for (Part& kept : parts_) kept.pixels = {};
    }
    const IntRect& place = part->place;
    if (part->pixels.width() == 0) {
        part->pixels = PixelBuffer(place.width(), place.height());
        const IntRect shown = nearestPixels(CRect(0, 0, frameSize.x * scale, frameSize.y * scale));
        blendScaled(part->pixels, part->pixels.bounds(), rows.rows(shown.top, shown.bottom), shown,
                    -place.left, -place.top, scale / zoom, 255);
    }
    context.drawPixels(part->pixels, place.left, place.top);
    return true;
}

}  // namespace VSTGUI
