// A picture in memory with premultiplied 32-bit pixels, and the integer arithmetic for blending.
#pragma once

#include "gui/base/color.h"
#include "gui/base/geometry.h"
#include "platform/memory_pages.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace VSTGUI {

// A rectangle of whole pixels. Right and bottom are outside.
struct IntRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
    bool isEmpty() const { return right <= left || bottom <= top; }
    IntRect common(const IntRect& other) const;  // intersection; empty if there is none
    IntRect around(const IntRect& other) const;  // smallest rectangle around both
    bool operator==(const IntRect& other) const;
};

// These clamp coordinates to what a picture can hold. NaN becomes 0.
int nearestPixel(CCoord coordinate);
IntRect nearestPixels(const CRect& rect);
IntRect allPixelsTouched(const CRect& rect);

// Takes zeroed memory from the system.
template <class T>
struct ZeroedMemory {
    using value_type = T;
    ZeroedMemory() = default;
    template <class U>
    explicit ZeroedMemory(const ZeroedMemory<U>&) {}
    T* allocate(size_t count) {
        void* const memory = platform::takeZeroedMemory(count * sizeof(T));
        if (!memory) throw std::bad_alloc();
        return static_cast<T*>(memory);
    }
    void deallocate(T* memory, size_t count) {
        platform::giveMemoryBack(memory, count * sizeof(T));
    }
    void construct(T*) {}  // already zero
    template <class U>
    void construct(T* at, const U& value) {
        new (at) T(value);
    }
    bool operator==(const ZeroedMemory&) const { return true; }
    bool operator!=(const ZeroedMemory&) const { return false; }
};

using ZeroedBytes = std::vector<uint8_t, ZeroedMemory<uint8_t>>;

// Rows are stored from the top without gaps. A pixel holds alpha, red, green, blue from the highest
// byte down, so the order in memory is blue, green, red, alpha. No colour exceeds its alpha.
class PixelBuffer {
  public:
    PixelBuffer() = default;
    PixelBuffer(int width, int height);  // transparent; a negative size counts as 0

    int width() const { return width_; }
    int height() const { return height_; }
    IntRect bounds() const { return {0, 0, width_, height_}; }

    uint32_t* row(int y) { return pixels_.data() + static_cast<size_t>(y) * width_; }
    const uint32_t* row(int y) const { return pixels_.data() + static_cast<size_t>(y) * width_; }
    uint32_t at(int x, int y) const { return row(y)[x]; }

    // Says that every pixel is about to be drawn.
    void expectFilled() {
        platform::expectFilled(pixels_.data(), pixels_.size() * sizeof(uint32_t));
    }

  private:
    int width_ = 0;
    int height_ = 0;
    std::vector<uint32_t, ZeroedMemory<uint32_t>> pixels_;
};

// a * b / 255, rounded to nearest. Exact for all bytes.
constexpr uint32_t times255(uint32_t a, uint32_t b) {
    const uint32_t product = a * b + 128;
    return (product + (product >> 8)) >> 8;
}

// Multiplies all four bytes of the pixel by alpha / 255, as times255 does, two at a time.
constexpr uint32_t faded(uint32_t pixel, uint32_t alpha) {
    constexpr uint32_t kOther = 0x00FF00FF;  // every other byte, so that products have room
    constexpr uint32_t kHalves = 0x00800080;
    const uint32_t low = (pixel & kOther) * alpha + kHalves;
    const uint32_t high = (pixel >> 8 & kOther) * alpha + kHalves;
    return ((low + (low >> 8 & kOther)) >> 8 & kOther) | ((high + (high >> 8 & kOther)) & ~kOther);
}

// Source over destination, both premultiplied.
constexpr uint32_t over(uint32_t source, uint32_t destination) {
    const uint32_t alpha = source >> 24;
    if (alpha == 255) return source;
    return source + faded(destination, 255 - alpha);
}

constexpr uint32_t premultiplied(CColor color) {
    const uint32_t opaque = 255u << 24 | color.red << 16 | color.green << 8 | color.blue;
    return color.alpha == 255 ? opaque : faded(opaque, color.alpha);
}

// Blends one colour into the part of the area that lies inside the buffer.
void fillArea(PixelBuffer& buffer, IntRect area, uint32_t pixel);

// Blends `count` pixels, faded by alpha.
void blendRow(const uint32_t* from, uint32_t* to, int count, uint32_t alpha);

// Blends `picture`, faded by alpha, into `clip`. Its pixel (0, 0) lands on (x, y).
void blendPicture(PixelBuffer& buffer, const IntRect& clip, const PixelBuffer& picture, int x,
                  int y, uint32_t alpha);

}  // namespace VSTGUI
