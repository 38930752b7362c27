// The picture of one frame at its zoom. It collects areas to redraw, and redraws them.
#pragma once

#include "gui/graphics/draw_context.h"
#include "gui/graphics/pixel_buffer.h"

#include <functional>
#include <utility>
#include <vector>

namespace VSTGUI {

class FrameSurface {
  public:
    void resize(CCoord width, CCoord height);
    // Clamps to 1..3.
    void setZoom(double zoom);
    double zoom() const { return zoom_; }

    IntRect pixelsOf(const CRect& area) const;
    void invalidate(const CRect& area);
    // Calls `paint` for each collected area, then `show` for its pixels.
    void redraw(const std::function<void(CDrawContext&, const CRect&)>& paint,
                const std::function<void(const IntRect&)>& show);

    // The picture that the window shows.
    const PixelBuffer& picture() const { return picture_; }
    PixelBuffer takePicture() { return std::exchange(picture_, {}); }

  private:
    void rebuild();

    double zoom_ = 1;
    CPoint size_;  // unzoomed
    PixelBuffer picture_;
    std::vector<IntRect> dirty_;  // disjoint areas within the picture
};

}  // namespace VSTGUI
