// Draws a picture larger or smaller than it is.
#include "gui/graphics/scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace VSTGUI {
namespace {

constexpr double kLargestStep = 3;
constexpr uint32_t kWhole = 256;

// Up to four neighbours along one axis and their weights, kWhole together.
struct Taps {
    std::array<int, 4> at;
    std::array<uint32_t, 4> weight;
};

// For the buffer's pixel `position`: a window as wide as the pixel, or as one of the picture where
// that is wider, and how much of it each of the picture's pixels covers.
Taps tapsFor(int position, double origin, double step, int first, int last) {
    const double width = std::clamp(step, 1.0, kLargestStep);
    const double start = (position + 0.5 - origin) * step - width / 2;
    const double begin = std::floor(start);
    Taps taps;
    uint32_t before = 0;
    for (int i = 0; i < 4; ++i) {
        const double covered = std::clamp((begin + i + 1 - start) / width, 0.0, 1.0);
        const auto upTo = static_cast<uint32_t>(covered * kWhole + 0.5);
        taps.at[i] = static_cast<int>(std::clamp<double>(begin + i, first, last));
        taps.weight[i] = upTo - before;
        before = upTo;
    }
    return taps;
}

// The four bytes of a pixel in the even bytes of a wide word: they are weighed and added at once.
uint64_t spread(uint32_t pixel) {
    return (pixel & 0x00FF00FFu) | static_cast<uint64_t>(pixel >> 8 & 0x00FF00FFu) << 32;
}

uint64_t rounded(uint64_t sums) {
    return (sums + 0x0080008000800080u) >> 8 & 0x00FF00FF00FF00FFu;
}

uint32_t gathered(uint64_t bytes) {
    return static_cast<uint32_t>(bytes) | static_cast<uint32_t>(bytes >> 32) << 8;
}

uint32_t mixed(const PixelBuffer& picture, const Taps& column, const Taps& line) {
    uint64_t sum = 0;
    for (int j = 0; j < 4; ++j) {
        if (line.weight[j] == 0) continue;
        const uint32_t* const row = picture.row(line.at[j]);
        uint64_t across = 0;
        for (int i = 0; i < 4; ++i) across += spread(row[column.at[i]]) * column.weight[i];
        sum += rounded(across) * line.weight[j];
    }
    return gathered(rounded(sum));
}

}  // namespace

void blendScaled(PixelBuffer& buffer, const IntRect& clip, const PixelBuffer& picture,
                 const IntRect& part, double x, double y, double step, uint32_t alpha) {
    const IntRect source = part.common(picture.bounds());
    const IntRect there{nearestPixel(x + source.left / step), nearestPixel(y + source.top / step),
                        nearestPixel(x + source.right / step),
                        nearestPixel(y + source.bottom / step)};
    const IntRect area = there.common(clip).common(buffer.bounds());
    if (source.isEmpty() || area.isEmpty() || alpha == 0) return;

    std::vector<Taps> columns;
    columns.reserve(static_cast<size_t>(area.width()));
    for (int column = area.left; column < area.right; ++column)
        columns.push_back(tapsFor(column, x, step, source.left, source.right - 1));
    for (int line = area.top; line < area.bottom; ++line) {
        const Taps rows = tapsFor(line, y, step, source.top, source.bottom - 1);
        uint32_t* to = buffer.row(line) + area.left;
        for (const Taps& column : columns) {
            *to = over(faded(mixed(picture, column, rows), alpha), *to);
            ++to;
        }
    }
}

}  // namespace VSTGUI
