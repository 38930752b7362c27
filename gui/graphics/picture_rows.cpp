// The pixels of a picture file, unpacked when they are first needed.
#include "gui/graphics/picture_rows.h"

#include <algorithm>
#include <new>
#include <utility>

namespace VSTGUI {

void PictureRows::prepare() const {
    if (!unpack_) return;
    std::optional<PictureRows> unpacked;
    try {
        unpacked = std::exchange(unpack_, nullptr)();
    } catch (const std::bad_alloc&) {
        // As good as damaged.
    }
    if (!unpacked) return;
    pixels_ = std::move(unpacked->pixels_);
    palette_ = std::move(unpacked->palette_);
    indices_ = std::move(unpacked->indices_);
    isColoured_ = std::move(unpacked->isColoured_);
    isOpaque_ = unpacked->isOpaque_;
}

bool PictureRows::isOpaque() const {
    prepare();
    return isOpaque_;
}

const PixelBuffer& PictureRows::rows(int top, int bottom) const {
    prepare();
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
