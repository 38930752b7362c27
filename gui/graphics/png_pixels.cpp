// Unpacks the plain kinds of PNG straight into premultiplied pixels.
#include "gui/graphics/png_pixels.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace VSTGUI {
namespace {

constexpr size_t kSignatureBytes = 8;
constexpr uint32_t kOpaque = 0xFF000000u;
constexpr int kNearest = 4;  // the filter that predicts from three neighbours

// Two pixels.
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
uint64_t widened(uint32_t pixel) {
    return (pixel & 0x00FF00FFu) | static_cast<uint64_t>(pixel >> 8 & 0x00FF00FFu) << 32;
}

uint32_t narrowed(uint64_t wide) {
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

// The bytes red, green, blue. Reads the byte before them.
uint32_t colourAt(const uint8_t* from) {
    uint32_t bytes;
    std::memcpy(&bytes, from - 1, sizeof bytes);
    return (bytes << 8 & 0xFF0000u) | (bytes >> 8 & 0xFF00u) | bytes >> 24;
}

// Undoes the filter that predicts from three neighbours, in two rows at once. The second is one
// pixel behind the first, which yields what is above it. A single row has none behind it.
void unfilterByNearest(const uint8_t* first, const uint8_t* second, const uint32_t* above,
                       uint32_t* to, int width) {
    Words left{}, corner{};
    uint32_t* const toSecond = to + width;
    for (int x = 0; x <= width; ++x) {
        const bool inFirst = x < width;
        const bool inSecond = second && x > 0;
        const Words over{inFirst ? widened(above[x]) : 0, left[0]};
        const Words added{inFirst ? widened(colourAt(first + 3 * x)) : 0,
                          inSecond ? widened(colourAt(second + 3 * (x - 1))) : 0};
        const Shorts sum = reinterpret_cast<Shorts>(added) +
                           nearestNeighbour(reinterpret_cast<Shorts>(left),
                                            reinterpret_cast<Shorts>(over),
                                            reinterpret_cast<Shorts>(corner));
        left = reinterpret_cast<Words>(sum & 255);
        corner = over;
        if (inFirst) to[x] = narrowed(left[0]) | kOpaque;
        if (inSecond) toSecond[x - 1] = narrowed(left[1]) | kOpaque;
    }
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
        case kNearest:
            unfilterByNearest(from, nullptr, above, to, width);
            return true;
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

std::optional<PictureRows> pictureOf(PlainPng png, const Unpacker& unpack) {
    const size_t rowBytes = 1 + static_cast<size_t>(png.width) * png.pixelBytes;
    const size_t size = png.height * rowBytes;
    if (png.pixelBytes == 1) {
        ZeroedBytes indices(size);
        if (!unpack(indices.data(), size, png.compressed)) return std::nullopt;
        const uint8_t* from = indices.data();
        for (int y = 0; y < png.height; ++y, from += rowBytes) {
            uint8_t largest = 0;
            for (size_t x = 1; x < rowBytes; ++x) largest = std::max(largest, from[x]);
            const bool isFiltered = *from != 0;
            if (isFiltered || largest >= png.palette.size()) return std::nullopt;
        }
        return PictureRows(png.width, png.height, std::move(png.palette), std::move(indices));
    }
    // Unpack to the end of the pixels. They take more room, but never overtake the rows still to
    // come.
    PixelBuffer picture(png.width, png.height);
    picture.expectFilled();
    const uint8_t* from = reinterpret_cast<uint8_t*>(picture.row(png.height)) - size;
    if (!unpack(reinterpret_cast<uint8_t*>(picture.row(png.height)) - size, size, png.compressed))
        return std::nullopt;
    const std::vector<uint32_t> nothing(static_cast<size_t>(png.width));
    const uint32_t* above = nothing.data();
    std::vector<uint8_t> rows(2 * rowBytes);
    for (int y = 0; y < png.height;) {
        const bool isPair =
            y + 1 < png.height && from[0] == kNearest && from[rowBytes] == kNearest;
        const int count = isPair ? 2 : 1;
        std::copy(from, from + count * rowBytes, rows.data());
        from += count * rowBytes;
        if (isPair) {
            unfilterByNearest(&rows[1], &rows[rowBytes + 1], above, picture.row(y), png.width);
        } else if (!unfilterColours(rows[0], &rows[1], above, picture.row(y), png.width)) {
            return std::nullopt;
        }
        y += count;
        above = picture.row(y - 1);
    }
    return PictureRows(std::move(picture), true);
}

}  // namespace VSTGUI
