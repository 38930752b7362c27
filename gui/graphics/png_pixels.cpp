// Unpacks the plain kinds of PNG straight into premultiplied pixels.
#include "gui/graphics/png_pixels.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace VSTGUI {
namespace {

constexpr size_t kSignatureBytes = 8;
constexpr uint32_t kOpaque = 0xFF000000u;

// One pixel; the upper half is idle, because compilers treat shorter vectors number by number.
typedef int16_t Shorts __attribute__((vector_size(16)));
typedef uint64_t Words __attribute__((vector_size(16)));

uint32_t bigEndian(const uint8_t* bytes) {
    return uint32_t{bytes[0]} << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
}

bool readHeader(const uint8_t* data, size_t size, PlainPng& png) {
    constexpr uint8_t kEight = 8, kColours = 2, kPalette = 3;
    if (size != 13 || data[8] != kEight) return false;
    if (data[9] != kColours && data[9] != kPalette) return false;
    png.pixelBytes = data[9] == kPalette ? 1 : 3;
    png.width = static_cast<int>(bigEndian(data));
    png.height = static_cast<int>(bigEndian(data + 4));
    return data[10] == 0 && data[11] == 0 && data[12] == 0;
}

bool readPalette(const uint8_t* data, size_t size, PlainPng& png) {
    if (!png.palette.empty() || png.pixelBytes != 1 || size == 0 || size % 3 != 0 || size > 768)
        return false;
    for (size_t i = 0; i < size; i += 3)
        png.palette.push_back(premultiplied(CColor(data[i], data[i + 1], data[i + 2])));
    return true;
}

bool readAlpha(const uint8_t* data, size_t size, PlainPng& png) {
    if (size > png.palette.size() || png.hasAlpha) return false;
    png.hasAlpha = true;
    for (size_t i = 0; i < size; ++i)
        if (data[i] != 255) png.palette[i] = faded(png.palette[i], data[i]);
    return true;
}

// Widens the four bytes, in an order of its own that narrowed() undoes.
Shorts widened(uint32_t pixel) {
    const uint64_t wide = (pixel & 0x00FF00FFu) | static_cast<uint64_t>(pixel >> 8 & 0x00FF00FFu)
                                                      << 32;
    return reinterpret_cast<Shorts>(Words{wide, 0});
}

uint32_t narrowed(const Shorts& bytes) {
    const uint64_t wide = reinterpret_cast<Words>(bytes)[0];
    return static_cast<uint32_t>(wide) | static_cast<uint32_t>(wide >> 32) << 8;
}

Shorts distance(const Shorts& from, const Shorts& to) {
    const Shorts difference = from - to;
    const Shorts sign = difference >> 15;
    return (difference ^ sign) - sign;
}

uint32_t addedBytes(uint32_t a, uint32_t b) {
    constexpr uint32_t kLow = 0x7F7F7F7Fu;
    return ((a & kLow) + (b & kLow)) ^ ((a ^ b) & ~kLow);
}

// Half the sum of each pair of bytes, rounded down.
uint32_t meanBytes(uint32_t a, uint32_t b) {
    return (a & b) + ((a ^ b) >> 1 & 0x7F7F7F7Fu);
}

// The neighbour that comes nearest to left + above - corner.
Shorts nearestNeighbour(const Shorts& left, const Shorts& above, const Shorts& corner) {
    const Shorts toLeft = distance(above, corner);
    const Shorts toAbove = distance(left, corner);
    const Shorts toCorner = distance(left + above, corner + corner);
    const Shorts second = toAbove <= toCorner ? above : corner;
    return ((toLeft <= toAbove) & (toLeft <= toCorner)) ? left : second;
}

// The bytes red, green, blue. Reads a fourth.
uint32_t colourAt(const uint8_t* from) {
    uint32_t bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return (bytes & 255) << 16 | (bytes & 0xFF00) | (bytes >> 16 & 255);
}

// Undoes the filter of one row of colours. The row above is transparent black for the first.
bool unfilterColours(int filter, const uint8_t* from, const uint32_t* above, uint32_t* to,
                     int width) {
    uint32_t left = 0;
    switch (filter) {
        case 0:
            for (int x = 0; x < width; ++x) to[x] = colourAt(from + 3 * x) | kOpaque;
            return true;
        case 1:
            for (int x = 0; x < width; ++x)
                to[x] = left = addedBytes(colourAt(from + 3 * x), left) | kOpaque;
            return true;
        case 2:
            for (int x = 0; x < width; ++x)
                to[x] = addedBytes(colourAt(from + 3 * x), above[x]) | kOpaque;
            return true;
        case 3:
            for (int x = 0; x < width; ++x)
                to[x] = left =
                    addedBytes(colourAt(from + 3 * x), meanBytes(left, above[x])) | kOpaque;
            return true;
        case 4: {
            Shorts wideLeft{}, corner{};
            for (int x = 0; x < width; ++x) {
                const Shorts wideAbove = widened(above[x]);
                const Shorts sum =
                    widened(colourAt(from + 3 * x)) + nearestNeighbour(wideLeft, wideAbove, corner);
                wideLeft = sum & 255;
                corner = wideAbove;
                to[x] = narrowed(wideLeft) | kOpaque;
            }
            return true;
        }
        default:
            return false;
    }
}

}  // namespace

std::optional<PlainPng> findPlainPng(const uint8_t* bytes, size_t size) {
    constexpr size_t kHead = 8;  // length and name
    constexpr size_t kChecksum = 4;
    PlainPng png;
    for (size_t at = kSignatureBytes; at + kHead + kChecksum <= size;) {
        const size_t length = bigEndian(bytes + at);
        const std::string_view name(reinterpret_cast<const char*>(bytes + at + 4), 4);
        const uint8_t* const data = bytes + at + kHead;
        if (length > size - at - kHead - kChecksum) return std::nullopt;
        const bool isFirst = at == kSignatureBytes;
        at += kHead + length + kChecksum;

        bool isPlain = true;
        if (name == "IHDR" || isFirst) {
            isPlain = name == "IHDR" && isFirst && readHeader(data, length, png);
        } else if (name == "PLTE") {
            isPlain = png.compressed.empty() && readPalette(data, length, png);
        } else if (name == "tRNS") {
            isPlain = png.compressed.empty() && readAlpha(data, length, png);
        } else if (name == "IDAT") {
            png.compressed.insert(png.compressed.end(), data, data + length);
        } else if (name == "IEND") {
            const bool isWhole = png.pixelBytes != 1 || !png.palette.empty();
            return isWhole ? std::optional(std::move(png)) : std::nullopt;
        } else {
            isPlain = (name[0] & 32) != 0;  // one that may be skipped
        }
        if (!isPlain) return std::nullopt;
    }
    return std::nullopt;
}

std::optional<PictureRows> pictureOf(PlainPng png, std::vector<uint8_t> unpacked) {
    const size_t rowBytes = static_cast<size_t>(png.width) * png.pixelBytes;
    const uint8_t* from = unpacked.data();
    if (png.pixelBytes == 1) {
        for (int y = 0; y < png.height; ++y, from += 1 + rowBytes) {
            uint8_t largest = 0;
            for (size_t x = 1; x <= rowBytes; ++x) largest = std::max(largest, from[x]);
            const bool isFiltered = *from != 0;
            if (isFiltered || largest >= png.palette.size()) return std::nullopt;
        }
        return PictureRows(png.width, png.height, std::move(png.palette), std::move(unpacked));
    }
    PixelBuffer picture(png.width, png.height);
    const std::vector<uint32_t> nothing(static_cast<size_t>(png.width));
    const uint32_t* above = nothing.data();
    for (int y = 0; y < png.height; ++y, from += 1 + rowBytes) {
        if (!unfilterColours(*from, from + 1, above, picture.row(y), png.width))
            return std::nullopt;
        above = picture.row(y);
    }
    return PictureRows(std::move(picture));
}

}  // namespace VSTGUI
