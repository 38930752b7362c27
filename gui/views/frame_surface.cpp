// The picture of one frame at its zoom. It collects areas to redraw, and redraws them.
#include "gui/views/frame_surface.h"

#include <algorithm>
#include <utility>

namespace VSTGUI {
namespace {

constexpr size_t kMostAreas = 24;  // with more, one area around all is cheaper
constexpr double kSmallestZoom = 1;
constexpr double kLargestZoom = 3;

CRect scaled(const CRect& rect, double factor) {
    return {rect.left * factor, rect.top * factor, rect.right * factor, rect.bottom * factor};
}

}  // namespace

void FrameSurface::resize(CCoord width, CCoord height) {
    size_ = CPoint(width, height);
    rebuild();
}

void FrameSurface::setZoom(double zoom) {
    zoom_ = std::clamp(zoom, kSmallestZoom, kLargestZoom);
    rebuild();
}

void FrameSurface::rebuild() {
    picture_ = PixelBuffer(nearestPixel(size_.x * zoom_), nearestPixel(size_.y * zoom_));
    picture_.expectFilled();
    dirty_.clear();
    invalidate(CRect(CPoint(), size_));
}

IntRect FrameSurface::pixelsOf(const CRect& area) const {
    return allPixelsTouched(scaled(area, zoom_)).common(picture_.bounds());
}

void FrameSurface::invalidate(const CRect& area) {
    IntRect wanted = pixelsOf(area);
    if (wanted.isEmpty()) return;
    // Merge areas until none overlap, so that no pixel is drawn twice.
    for (size_t i = 0; i < dirty_.size();) {
        if (dirty_.size() < kMostAreas && dirty_[i].common(wanted).isEmpty()) {
            ++i;
            continue;
        }
        wanted = wanted.around(dirty_[i]);
        dirty_.erase(dirty_.begin() + static_cast<std::ptrdiff_t>(i));
        i = 0;
    }
    dirty_.push_back(wanted);
}

void FrameSurface::redraw(const std::function<void(CDrawContext&, const CRect&)>& paint,
                          const std::function<void(const IntRect&)>& show) {
    for (const IntRect& area : std::exchange(dirty_, {})) {
        CDrawContext context(picture_, area, zoom_);
        paint(context, scaled(CRect(area.left, area.top, area.right, area.bottom), 1 / zoom_));
        show(area);
    }
}

}  // namespace VSTGUI
