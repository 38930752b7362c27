// Draws a picture enlarged or reduced.
#include "gui/graphics/scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace VSTGUI {
namespace {

constexpr double kLargestStep = 3;
constexpr int kMostTaps = 4;  // per axis: the pixels that a window of kLargestStep can touch
constexpr uint32_t kWhole = 256;

// Neighbours along one axis and their weights. The weights add up to kWhole.
struct Taps {
    std::array<int, kMostTaps> at;
    std::array<uint32_t, kMostTaps> weight;
};

// Finds the picture pixels that contribute to buffer pixel `position`. The window is as wide as a
// buffer pixel or a picture pixel, whichever is wider. A weight is the share of the window that a
// picture pixel covers.
Taps tapsFor(int position, double origin, double step, int first, int last) {
    const double width = std::clamp(step, 1.0, kLargestStep);
    const double start = (position + 0.5 - origin) * step - width / 2;
    const double begin = std::floor(start);
    Taps taps;
    uint32_t before = 0;
    for (int i = 0; i < kMostTaps; ++i) {
        const double covered = std::clamp((begin + i + 1 - start) / width, 0.0, 1.0);
        const auto upTo = static_cast<uint32_t>(covered * kWhole + 0.5);
        taps.at[i] = static_cast<int>(std::clamp<double>(begin + i, first, last));
        taps.weight[i] = upTo - before;
        before = upTo;
    }
    return taps;
}

// Spreads the four bytes of a pixel over a wide word, so that all four are weighted and added at
// once.
uint64_t spread(uint32_t pixel) {
    return (pixel & 0x00FF00FFu) | static_cast<uint64_t>(pixel >> 8 & 0x00FF00FFu) << 32;
}

uint64_t rounded(uint64_t sums) {
    return (sums + 0x0080008000800080u) >> 8 & 0x00FF00FF00FF00FFu;
}

uint32_t gathered(uint64_t bytes) {
    return static_cast<uint32_t>(bytes) | static_cast<uint32_t>(bytes >> 32) << 8;
}

// Rows of the picture, scaled horizontally. The buffer's lines need them from top to bottom, so a
// few rows are enough and each is made only once.
class AcrossRows {
  public:
    AcrossRows(const PixelBuffer& picture, const std::vector<Taps>& columns, int tapCount)
        : picture_(picture), columns_(columns), tapCount_(tapCount) {
        made_.fill(-1);
        for (auto& row : rows_) row.resize(columns.size());
    }

    const uint64_t* row(int y) {
        const int slot = y % kMostTaps;
        if (made_[slot] != y) {
            tapCount_ == 2 ? make<2>(y, rows_[slot]) : make<kMostTaps>(y, rows_[slot]);
            made_[slot] = y;
        }
        return rows_[slot].data();
    }

  private:
    template <int kTaps>
    void make(int y, std::vector<uint64_t>& row) const {
        const uint32_t* const from = picture_.row(y);
        for (size_t x = 0; x < row.size(); ++x) {
            const Taps& taps = columns_[x];
            uint64_t sum = 0;
            for (int i = 0; i < kTaps; ++i) sum += spread(from[taps.at[i]]) * taps.weight[i];
            row[x] = rounded(sum);
        }
    }

    const PixelBuffer& picture_;
    const std::vector<Taps>& columns_;
    const int tapCount_;
    std::array<std::vector<uint64_t>, kMostTaps> rows_;
    std::array<int, kMostTaps> made_;
};

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
    const int tapCount = step <= 1 ? 2 : kMostTaps;
    AcrossRows across(picture, columns, tapCount);
    for (int line = area.top; line < area.bottom; ++line) {
        const Taps taps = tapsFor(line, y, step, source.top, source.bottom - 1);
        std::array<const uint64_t*, kMostTaps> rows{};
        for (int i = 0; i < tapCount; ++i) rows[i] = across.row(taps.at[i]);
        uint32_t* const to = buffer.row(line) + area.left;
        for (size_t column = 0; column < columns.size(); ++column) {
            uint64_t sum = 0;
            for (int i = 0; i < tapCount; ++i) sum += rows[i][column] * taps.weight[i];
            const uint32_t pixel = gathered(rounded(sum));
            to[column] = over(alpha == 255 ? pixel : faded(pixel, alpha), to[column]);
        }
    }
}

}  // namespace VSTGUI
