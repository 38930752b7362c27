// The picture of one frame: collects areas to redraw, draws them, and enlarges the result.
#include "gui/views/frame_surface.h"
#include "gui/graphics/scale.h"

#include <algorithm>
#include <utility>

namespace VSTGUI {
namespace {

constexpr size_t kMostAreas = 24;  // beyond that one area around all is cheaper

}  // namespace

void FrameSurface::resize(int width, int height) {
    rebuild(PixelBuffer(width, height));
}

void FrameSurface::setZoom(double zoom) {
    zoom_ = std::clamp(zoom, kSmallestZoom, kLargestZoom);
    rebuild(std::move(picture_));
}

void FrameSurface::rebuild(PixelBuffer picture) {
    picture_ = std::move(picture);
    enlarged_ = zoom_ == 1 ? PixelBuffer()
                           : PixelBuffer(zoomedLength(picture_.width(), zoom_),
                                         zoomedLength(picture_.height(), zoom_));
    dirty_.clear();
    invalidate(picture_.bounds());
}

void FrameSurface::invalidate(const IntRect& area) {
    IntRect wanted = area.common(picture_.bounds());
    if (wanted.isEmpty()) return;
    // Areas that meet become one, until none meets another: no pixel is drawn twice.
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
        // What is see-through must not gather what was drawn before.
        fillArea(picture_, area, premultiplied(kBlackCColor));
        CDrawContext context(picture_, area);
        paint(context, CRect(area.left, area.top, area.right, area.bottom));
        if (zoom_ == 1) {
            show(area);
            continue;
        }
        const IntRect larger = zoomedArea(area, picture_, enlarged_);
        scaleArea(picture_, enlarged_, larger);
        show(larger);
    }
}

}  // namespace VSTGUI
