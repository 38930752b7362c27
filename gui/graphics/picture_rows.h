// The pixels of a picture file. They are unpacked when they are first needed, and rows of a palette
// are coloured when they are first drawn, because most frames of a strip never are.
#pragma once

#include "gui/graphics/pixel_buffer.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace VSTGUI {

// Use from one thread at a time.
class PictureRows {
  public:
    using Unpack = std::function<std::optional<PictureRows>()>;

    explicit PictureRows(PixelBuffer pixels, bool isOpaque = false)
        : width_(pixels.width()),
          height_(pixels.height()),
          pixels_(std::move(pixels)),
          isOpaque_(isOpaque) {}
    // `indices` holds the rows, each after one byte. All indices are below the palette's size.
    PictureRows(int width, int height, std::vector<uint32_t> palette, ZeroedBytes indices)
        : width_(width),
          height_(height),
          pixels_(width, height),
          palette_(std::move(palette)),
          indices_(std::move(indices)),
          isColoured_(static_cast<size_t>(height)) {}
    // Calls `unpack` once, for a picture of this size. If it fails, nothing is ever drawn.
    PictureRows(int width, int height, Unpack unpack)
        : width_(width), height_(height), unpack_(std::move(unpack)) {}

    // Unpacks the pixels now.
    void prepare() const;
    // Whether it is known that no pixel is transparent.
    bool isOpaque() const;
    int width() const { return width_; }
    int height() const { return height_; }
    // The picture, in which at least the rows from `top` up to `bottom` are right. Empty if it
    // cannot be unpacked.
    const PixelBuffer& rows(int top, int bottom) const;
    const PixelBuffer& all() const { return rows(0, height()); }
    uint32_t at(int x, int y) const {
        const PixelBuffer& pixels = rows(y, y + 1);
        return y < pixels.height() ? pixels.at(x, y) : 0;
    }

  private:
    int width_;
    int height_;
    mutable Unpack unpack_;  // empty once it has been called
    mutable PixelBuffer pixels_;
    mutable std::vector<uint32_t> palette_;
    mutable ZeroedBytes indices_;
    mutable std::vector<bool> isColoured_;  // by row; empty if all are
    mutable bool isOpaque_ = false;
};

}  // namespace VSTGUI
