// The pixels of a picture file. Rows of a palette are coloured when they are first drawn, because
// most frames of a strip never are.
#include "gui/graphics/picture_rows.h"

#include <algorithm>

namespace VSTGUI {

const PixelBuffer& PictureRows::rows(int top, int bottom) const {
    if (isColoured_.empty()) return pixels_;
    for (int y = std::max(top, 0); y < std::min(bottom, height()); ++y) {
        if (isColoured_[y]) continue;
        isColoured_[y] = true;
        const uint8_t* const from = &indices_[static_cast<size_t>(y) * (1 + width()) + 1];
        uint32_t* const to = pixels_.row(y);
        for (int x = 0; x < width(); ++x) to[x] = palette_[from[x]];
    }
    return pixels_;
}

}  // namespace VSTGUI
