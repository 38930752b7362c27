// The picture of one frame: collects areas to redraw, draws them, and enlarges the result.
#pragma once

#include "gui/graphics/draw_context.h"
#include "gui/graphics/pixel_buffer.h"

#include <functional>
#include <vector>

namespace VSTGUI {

class FrameSurface {
  public:
    void resize(int width, int height);
    // From 1 to 3; other factors are pulled in.
    void setZoom(double zoom);
    double zoom() const { return zoom_; }

    void invalidate(const IntRect& area);
    // Calls `paint` for every area collected, then `show` for what has changed in shown().
    void redraw(const std::function<void(CDrawContext&, const CRect&)>& paint,
                const std::function<void(const IntRect&)>& show);

    const PixelBuffer& picture() const { return picture_; }
    // What the window shows: the picture enlarged by the zoom.
    const PixelBuffer& shown() const { return zoom_ == 1 ? picture_ : enlarged_; }

  private:
    void rebuild(PixelBuffer picture);

    double zoom_ = 1;
    PixelBuffer picture_;
    PixelBuffer enlarged_;        // unused at 100 %
    std::vector<IntRect> dirty_;  // disjoint areas within the picture
};

}  // namespace VSTGUI
