// Unpacks the plain kinds of PNG straight into premultiplied pixels.
#pragma once

#include "gui/graphics/picture_rows.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace VSTGUI {

// A picture of eight bits per palette index or colour, not interlaced.
struct PlainPng {
    int width = 0;
    int height = 0;
    int pixelBytes = 0;  // 1 with a palette, 3 without
    bool hasAlpha = false;
    bool isIntact = true;             // all checksums are right
    std::vector<uint32_t> palette;    // premultiplied
    std::vector<uint8_t> compressed;  // all chunks of pixels, joined
};

// Returns nothing for every other kind, and for a file with any doubt about it.
std::optional<PlainPng> findPlainPng(const uint8_t* bytes, size_t size);

// Fills `size` bytes at `to`, and returns false unless there are exactly as many.
using Unpacker =
    std::function<bool(uint8_t* to, size_t size, const std::vector<uint8_t>& compressed)>;

// Returns nothing if the pixels are damaged.
std::optional<PictureRows> pictureOf(const PlainPng& png, const Unpacker& unpack);

}  // namespace VSTGUI
