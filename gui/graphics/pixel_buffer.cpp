// A picture in memory: premultiplied 32-bit pixels.
#include "gui/graphics/pixel_buffer.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {
namespace {

int toInt(CCoord coordinate) {
    constexpr CCoord kLimit = 1 << 24;
    if (std::isnan(coordinate)) return 0;
    return static_cast<int>(std::clamp(coordinate, -kLimit, kLimit));
}

}  // namespace

IntRect IntRect::common(const IntRect& other) const {
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
            std::min(bottom, other.bottom)};
}

IntRect IntRect::around(const IntRect& other) const {
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
            std::max(bottom, other.bottom)};
}

bool IntRect::operator==(const IntRect& other) const {
    return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
}

int nearestPixel(CCoord coordinate) {
    return toInt(std::floor(coordinate + 0.5));
}

IntRect nearestPixels(const CRect& rect) {
    return {nearestPixel(rect.left), nearestPixel(rect.top), nearestPixel(rect.right),
            nearestPixel(rect.bottom)};
}

IntRect allPixelsTouched(const CRect& rect) {
    return {toInt(std::floor(rect.left)), toInt(std::floor(rect.top)), toInt(std::ceil(rect.right)),
            toInt(std::ceil(rect.bottom))};
}

PixelBuffer::PixelBuffer(int width, int height)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      pixels_(static_cast<size_t>(width_) * height_) {}

void fillArea(PixelBuffer& buffer, IntRect area, uint32_t pixel) {
    area = area.common(buffer.bounds());
    if (area.isEmpty()) return;
    for (int y = area.top; y < area.bottom; ++y) {
        uint32_t* const row = buffer.row(y);
        for (int x = area.left; x < area.right; ++x) row[x] = over(pixel, row[x]);
    }
}

// Most pixels are opaque, so stretches of them are copied.
void blendRow(const uint32_t* from, uint32_t* to, int count, uint32_t alpha) {
    constexpr int kStretch = 32;
    for (int done = 0; done < count; done += kStretch) {
        const int end = std::min(done + kStretch, count);
        uint32_t common = alpha << 24;
        for (int i = done; i < end; ++i) common &= from[i];
        if (common >> 24 == 255) {
            std::copy(from + done, from + end, to + done);
        } else if (alpha == 255) {
            for (int i = done; i < end; ++i) to[i] = over(from[i], to[i]);
        } else {
            for (int i = done; i < end; ++i) to[i] = over(faded(from[i], alpha), to[i]);
        }
    }
}

void blendPicture(PixelBuffer& buffer, const IntRect& clip, const PixelBuffer& picture, int x,
                  int y, uint32_t alpha) {
    const IntRect there{x, y, x + picture.width(), y + picture.height()};
    const IntRect area = there.common(clip).common(buffer.bounds());
    if (area.isEmpty() || alpha == 0) return;
    for (int line = area.top; line < area.bottom; ++line) {
        blendRow(picture.row(line - y) + area.left - x, buffer.row(line) + area.left, area.width(),
                 alpha);
    }
}

}  // namespace VSTGUI
