// Keeps parts of an enlarged background whose small areas are drawn again and again.
#pragma once

#include "gui/graphics/bitmap.h"
#include "gui/graphics/draw_context.h"

#include <vector>

namespace VSTGUI {

class KeptBackground {
  public:
    // Call this when the frame's size, zoom or background changes.
    void forget() { parts_.clear(); }
    // Keeps what lies under the view, in window pixels.
    void keep(const IntRect& view);
    // Draws the area from a part that is kept. Returns false without drawing if there is none, or
    // if drawing the picture itself is no slower. The picture is opaque, fills the frame and begins
    // at its corner.
    bool draw(CDrawContext& context, const CBitmap& picture, const CPoint& frameSize, double zoom);

  private:
    struct Part {
        IntRect place;
        PixelBuffer pixels;  // empty until it is needed
    };

    std::vector<Part> parts_;
    const PictureRows* picture_ = nullptr;  // of all pixels; only compared
};

}  // namespace VSTGUI
