// Enlarges a finished picture smoothly.
#include "gui/graphics/scale.h"

#include <algorithm>
#include <vector>

namespace VSTGUI {
namespace {

// Where a target pixel's middle falls: between source pixels `first` and `second`, `weight` / 256
// of the way.
struct Tap {
    int first;
    int second;
    uint32_t weight;
};

Tap tapFor(int position, int sourceLength, int targetLength) {
    const int64_t middle =
        (int64_t{2} * position + 1) * sourceLength * 128 / targetLength - 128;  // in 1/256
    const int64_t inside = std::clamp<int64_t>(middle, 0, int64_t{sourceLength - 1} * 256);
    const int first = static_cast<int>(inside >> 8);
    return {first, std::min(first + 1, sourceLength - 1), static_cast<uint32_t>(inside & 255)};
}

// Two bytes at a time: each of a pixel's channels mixed by weight / 256.
uint32_t mixed(uint32_t a, uint32_t b, uint32_t weight) {
    constexpr uint32_t kEven = 0x00FF00FF;
    const uint32_t keep = 256 - weight;
    const uint32_t even = ((a & kEven) * keep + (b & kEven) * weight + 0x00800080) >> 8 & kEven;
    const uint32_t odd =
        ((a >> 8 & kEven) * keep + (b >> 8 & kEven) * weight + 0x00800080) & ~kEven;
    return even | odd;
}

}  // namespace

int zoomedLength(int length, double zoom) {
    return nearestPixel(length * zoom);
}

IntRect zoomedArea(const IntRect& area, const PixelBuffer& source, const PixelBuffer& target) {
    if (source.width() == 0 || source.height() == 0) return {};
    // A pixel reaches half a source pixel beyond its own edges; a whole one covers the rounding.
    const auto low = [](int edge, int64_t from, int64_t to) {
        return static_cast<int>((edge - 1) * to / from) - 1;
    };
    const auto high = [](int edge, int64_t from, int64_t to) {
        return static_cast<int>((edge + 1) * to / from) + 1;
    };
    const IntRect touched{low(area.left, source.width(), target.width()),
                          low(area.top, source.height(), target.height()),
                          high(area.right, source.width(), target.width()),
                          high(area.bottom, source.height(), target.height())};
    return touched.common(target.bounds());
}

void scaleArea(const PixelBuffer& source, PixelBuffer& target, const IntRect& area) {
    if (area.isEmpty() || source.bounds().isEmpty()) return;
    std::vector<Tap> columns;
    for (int x = area.left; x < area.right; ++x)
        columns.push_back(tapFor(x, source.width(), target.width()));
    for (int y = area.top; y < area.bottom; ++y) {
        const Tap rows = tapFor(y, source.height(), target.height());
        const uint32_t* const upper = source.row(rows.first);
        const uint32_t* const lower = source.row(rows.second);
        uint32_t* const to = target.row(y) + area.left;
        for (size_t i = 0; i < columns.size(); ++i) {
            const Tap& tap = columns[i];
            to[i] = mixed(mixed(upper[tap.first], upper[tap.second], tap.weight),
                          mixed(lower[tap.first], lower[tap.second], tap.weight), rows.weight);
        }
    }
}

}  // namespace VSTGUI
