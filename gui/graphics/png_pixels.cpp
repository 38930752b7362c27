// Unpacks the plain kinds of PNG straight into premultiplied pixels.
#include "gui/graphics/png_pixels.h"
#include "gui/graphics/wide_vectors.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace VSTGUI {
namespace {

constexpr size_t kSignatureBytes = 8;
constexpr uint32_t kOpaque = 0xFF000000u;
constexpr int kNearest = 4;  // the filter that predicts from three neighbours

typedef uint8_t Octets __attribute__((vector_size(16)));
typedef uint8_t HalfOctets __attribute__((vector_size(8)));
typedef int16_t Shorts __attribute__((vector_size(16)));  // two pixels
typedef uint32_t Quads __attribute__((vector_size(16)));
typedef uint64_t Words __attribute__((vector_size(16)));

uint32_t bigEndian(const uint8_t* bytes) {
    return uint32_t{bytes[0]} << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
}

// Tables of the polynomial's remainders: of a byte, and of one that 1, 2 and 3 others follow.
using Remainders = std::array<std::array<uint32_t, 256>, 4>;
constexpr Remainders remainders() {
    Remainders tables{};
    for (uint32_t byte = 0; byte < 256; ++byte) {
        uint32_t rest = byte;
        for (int bit = 0; bit < 8; ++bit) rest = rest >> 1 ^ (rest & 1 ? 0xEDB88320u : 0);
        tables[0][byte] = rest;
    }
    for (size_t i = 1; i < tables.size(); ++i)
        for (size_t byte = 0; byte < 256; ++byte) {
            const uint32_t before = tables[i - 1][byte];
            tables[i][byte] = before >> 8 ^ tables[0][before & 255];
        }
    return tables;
}
constexpr Remainders kRemainders = remainders();

// CRC-32, four bytes at a time.
uint32_t checksum(const uint8_t* bytes, size_t size) {
    uint32_t rest = ~0u;
    for (; size >= 4; size -= 4, bytes += 4) {
        rest ^= bytes[0] | bytes[1] << 8 | bytes[2] << 16 | uint32_t{bytes[3]} << 24;
        rest = kRemainders[3][rest & 255] ^ kRemainders[2][rest >> 8 & 255] ^
               kRemainders[1][rest >> 16 & 255] ^ kRemainders[0][rest >> 24];
    }
    for (; size > 0; --size) rest = rest >> 8 ^ kRemainders[0][(rest ^ *bytes++) & 255];
    return ~rest;
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

Shorts widened(uint32_t first, uint32_t second) {
    return reinterpret_cast<Shorts>(
        __builtin_shufflevector(reinterpret_cast<Octets>(Quads{first, second, 0, 0}), Octets{}, 0,
                                16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
}

uint32_t bytesAt(const uint8_t* from) {
    uint32_t bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return bytes;
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

// From the order in files to that of pixels, or back.
uint32_t swapped(uint32_t pixel) {
    return (pixel >> 16 & 255) | (pixel & 0xFF00) | (pixel & 255) << 16 | kOpaque;
}

// The bytes red, green, blue. Reads the byte before them.
uint32_t colourAt(const uint8_t* from) {
    return swapped(bytesAt(from - 1) >> 8);
}

// Undoes the filter that predicts from three neighbours, in two rows at once. The second is one
// pixel behind the first, which yields what is above it.
class NearestRows {
  public:
    explicit NearestRows(int width)
        : width_(static_cast<size_t>(width)),
          second_(3 * width_ + kGap),
          from_(second_ + 3 * width_ + kGap),
          above_(width_ + 1),
          first_(width_ + 1),
          behind_(width_ + 1) {}

    // `rows` are one or two, each after a byte.
    void undo(const uint8_t* from, int rows, const uint32_t* above, uint32_t* to) {
        std::copy(from, from + 3 * width_, from_.data());
        if (rows == 2) {
            const uint8_t* const next = from + 3 * width_ + 1;
            std::copy(next, next + 3 * width_, &from_[second_]);
        }
        swapRow(above, above_.data());
        undoBoth();
        swapRow(first_.data(), to);
        if (rows == 2) swapRow(&behind_[1], to + width_);
    }

  private:
    // Before a row's first pixel everything is black. After a row there is one byte to be read.
    static constexpr size_t kGap = 4;

    void swapRow(const uint32_t* from, uint32_t* to) const {
        for (size_t x = 0; x < width_; ++x) to[x] = swapped(from[x]);
    }

    void undoBoth() {
        const uint8_t* first = from_.data();
        const uint8_t* second = &from_[second_ - 3];
        Shorts left{}, corner{};
        for (size_t x = 0; x <= width_; ++x, first += 3, second += 3) {
            const auto over = reinterpret_cast<Shorts>(
                __builtin_shufflevector(reinterpret_cast<Words>(widened(above_[x], 0)),
                                        reinterpret_cast<Words>(left), 0, 2));
            left =
                (widened(bytesAt(first), bytesAt(second)) + nearestNeighbour(left, over, corner)) &
                255;
            corner = over;
            const auto bytes = __builtin_convertvector(left, HalfOctets);
            std::memcpy(&first_[x], &bytes, sizeof first_[x]);
            std::memcpy(&behind_[x], reinterpret_cast<const uint8_t*>(&bytes) + 4,
                        sizeof behind_[x]);
        }
    }

    const size_t width_;
    const size_t second_;  // where the second row begins
    std::vector<uint8_t> from_;
    std::vector<uint32_t> above_, first_, behind_;  // in the order of files
};

#ifdef QUARZEL_WIDE
// Adds a row of colours to the row above, as far as vectors of eight pixels reach. Returns how far.
// Reads four bytes past the last pixel.
QUARZEL_WIDE int addRow(const uint8_t* from, const uint32_t* above, uint32_t* to, int width) {
    constexpr int kEight = 8;
    constexpr int kHalf = 12;  // bytes of four pixels
    const __m256i order = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(2, 1, 0, -1, 5, 4, 3, -1, 8, 7, 6, -1, 11, 10, 9, -1));
    const __m256i opaque = _mm256_set1_epi32(static_cast<int>(kOpaque));
    int x = 0;
    for (; x + kEight <= width; x += kEight) {
        const auto* const bytes = reinterpret_cast<const __m128i*>(from + 3 * x);
        const auto* const next = reinterpret_cast<const __m128i*>(from + 3 * x + kHalf);
        const __m256i colours = _mm256_shuffle_epi8(
            _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(bytes)),
                                    _mm_loadu_si128(next), 1),
            order);
        const __m256i sum = _mm256_add_epi8(
            colours, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(above + x)));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + x), _mm256_or_si256(sum, opaque));
    }
    return x;
}
#endif

// Undoes any other filter of one row of colours. The row above is transparent black for the first.
// Four bytes past the row are readable.
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
        case 2: {
            int x = 0;
#ifdef QUARZEL_WIDE
            if (hasWideVectors()) x = addRow(from, above, to, width);
#endif
            for (; x < width; ++x) to[x] = addedBytes(colourAt(from + 3 * x), above[x]) | kOpaque;
            return true;
        }
        case 3:
            for (int x = 0; x < width; ++x)
                to[x] = left =
                    addedBytes(colourAt(from + 3 * x), meanBytes(left, above[x])) | kOpaque;
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
        png.isIntact = png.isIntact && checksum(data - 4, 4 + length) == bigEndian(data + length);
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

std::optional<PictureRows> pictureOf(const PlainPng& png, const Unpacker& unpack) {
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
        return PictureRows(png.width, png.height, png.palette, std::move(indices));
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
    std::vector<uint8_t> row(rowBytes + sizeof(uint32_t));
    NearestRows nearest(png.width);
    for (int y = 0; y < png.height;) {
        uint32_t* const to = picture.row(y);
        int count = 1;
        if (*from == kNearest) {
            if (y + 1 < png.height && from[rowBytes] == kNearest) count = 2;
            nearest.undo(from + 1, count, above, to);
        } else {
            std::copy(from, from + rowBytes, row.data());
            if (!unfilterColours(row[0], &row[1], above, to, png.width)) return std::nullopt;
        }
        from += count * rowBytes;
        y += count;
        above = picture.row(y - 1);
    }
    return PictureRows(std::move(picture), true);
}

}  // namespace VSTGUI
