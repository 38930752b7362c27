// The pixels of a picture file. Rows of a palette are coloured when they are first drawn, because
// most frames of a strip never are.
#pragma once

#include "gui/graphics/pixel_buffer.h"

#include <cstdint>
#include <vector>

namespace VSTGUI {

class PictureRows {
  public:
    explicit PictureRows(PixelBuffer pixels, bool isOpaque = false)
        : pixels_(std::move(pixels)), isOpaque_(isOpaque) {}
    // `indices` holds the rows, each after one byte. All indices are below the palette's size.
    PictureRows(int width, int height, std::vector<uint32_t> palette, ZeroedBytes indices)
        : pixels_(width, height),
          palette_(std::move(palette)),
          indices_(std::move(indices)),
          isColoured_(static_cast<size_t>(height)) {}

    // Whether it is known that no pixel is transparent.
    bool isOpaque() const { return isOpaque_; }
    int width() const { return pixels_.width(); }
    int height() const { return pixels_.height(); }
    // The picture, in which at least the rows from `top` up to `bottom` are right.
    const PixelBuffer& rows(int top, int bottom) const;
    const PixelBuffer& all() const { return rows(0, height()); }
    uint32_t at(int x, int y) const { return rows(y, y + 1).at(x, y); }

  private:
    mutable PixelBuffer pixels_;
    std::vector<uint32_t> palette_;
    ZeroedBytes indices_;
    mutable std::vector<bool> isColoured_;  // by row; empty if all are
    bool isOpaque_ = false;
};

}  // namespace VSTGUI
