// Draws a picture enlarged or reduced.
#include "gui/graphics/scale.h"
#include "gui/graphics/row_scaler.h"
#include "platform/two_threads.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <vector>

namespace VSTGUI {
namespace {

constexpr double kLargestStep = 3;

// Finds the picture pixels that contribute to buffer pixel `position`. The window is as wide as a
// buffer pixel or a picture pixel, whichever is wider. A weight is the share of the window that a
// picture pixel covers.
Taps tapsFor(int position, double origin, double step, int first, int last, int tapCount) {
    const double width = std::clamp(step, 1.0, kLargestStep);
    const double start = (position + 0.5 - origin) * step - width / 2;
    const double begin = std::floor(start);
    Taps taps{};
    taps.begin = static_cast<int>(std::clamp<double>(begin, first - kMostTaps, last));
    uint32_t before = 0;
    for (int i = 0; i < tapCount; ++i) {
        const double covered = std::clamp((begin + i + 1 - start) / width, 0.0, 1.0);
        const auto upTo = static_cast<uint32_t>(covered * kWholeWeight + 0.5);
        taps.at[i] = static_cast<int>(std::clamp<double>(begin + i, first, last));
        taps.weight[i] = upTo - before;
        before = upTo;
    }
    std::fill(taps.at.begin() + tapCount, taps.at.end(), taps.at[tapCount - 1]);
    return taps;
}

// Rows of the picture, scaled horizontally. The buffer's lines need them from top to bottom, so a
// few rows are enough and each is made only once.
class AcrossRows {
  public:
    AcrossRows(const PixelBuffer& picture, const std::vector<Taps>& columns,
               const RowScaler& scaler)
        : picture_(picture),
          scaler_(scaler),
          first_(columns.front().begin),
          from_(columns.front().at.front()),
          to_(columns.back().at.back() + 1),
          pixels_(static_cast<size_t>(columns.back().begin + kMostTaps - first_)) {
        made_.fill(-1);
        for (auto& row : rows_) row.resize(scaler.rowSize());
    }

    const uint32_t* row(int y) {
        const int slot = y % kMostTaps;
        if (made_[slot] != y) {
            takePixels(y);
            isOpaque_[slot] = scaler_.across(pixels_, rows_[slot]);
            made_[slot] = y;
        }
        return rows_[slot].data();
    }
    // Of a row that was asked for lately.
    bool isOpaque(int y) const { return isOpaque_[y % kMostTaps]; }

  private:
    // Neighbours beyond the edges repeat them.
    void takePixels(int y) {
        const uint32_t* const row = picture_.row(y);
        const auto begin = pixels_.begin() + (from_ - first_);
        const auto end = std::copy(row + from_, row + to_, begin);
        std::fill(pixels_.begin(), begin, row[from_]);
        std::fill(end, pixels_.end(), row[to_ - 1]);
    }

    const PixelBuffer& picture_;
    const RowScaler& scaler_;
    const int first_;  // column of the picture, or one beyond its edge
    const int from_;   // columns of the picture
    const int to_;
    std::vector<uint32_t> pixels_;  // of the row that is being scaled
    std::array<std::vector<uint32_t>, kMostTaps> rows_;
    std::array<int, kMostTaps> made_;
    std::array<bool, kMostTaps> isOpaque_{};
};

// One picture on its way into one area of a buffer.
struct Scaling {
    PixelBuffer& buffer;
    const IntRect& area;
    const PixelBuffer& picture;
    const IntRect& source;
    const std::vector<Taps>& columns;
    const RowScaler& scaler;
    int tapCount;
    double y;
    double step;
    uint32_t alpha;
};

void blendLines(const Scaling& scaling, int top, int bottom) {
    const auto width = static_cast<size_t>(scaling.area.width());
    AcrossRows across(scaling.picture, scaling.columns, scaling.scaler);
    std::vector<uint32_t> pixels(width);
    for (int line = top; line < bottom; ++line) {
        const Taps taps = tapsFor(line, scaling.y, scaling.step, scaling.source.top,
                                  scaling.source.bottom - 1, scaling.tapCount);
        std::array<const uint32_t*, kMostTaps> rows{};
        bool replaces = scaling.alpha == 255;
        for (int i = 0; i < scaling.tapCount; ++i) {
            rows[i] = across.row(taps.at[i]);
            replaces = replaces && across.isOpaque(taps.at[i]);
        }
        uint32_t* const target = scaling.buffer.row(line) + scaling.area.left;
        uint32_t* const to = replaces ? target : pixels.data();
        scaling.scaler.add(rows, taps, to, width);
        if (!replaces) blendRow(to, target, scaling.area.width(), scaling.alpha);
    }
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

    const int tapCount = step <= 1 ? 2 : kMostTaps;
    std::vector<Taps> columns;
    columns.reserve(static_cast<size_t>(area.width()));
    for (int column = area.left; column < area.right; ++column)
        columns.push_back(tapsFor(column, x, step, source.left, source.right - 1, tapCount));
    const auto scaler = makeRowScaler(columns, tapCount);
    const Scaling scaling{buffer,  area,     picture, source, columns,
                          *scaler, tapCount, y,       step,   alpha};
    constexpr int kLarge = 1 << 20;  // pixels; with fewer, starting a thread gains nothing
    constexpr int kBand = 64;        // lines
    if (area.width() * area.height() < kLarge) return blendLines(scaling, area.top, area.bottom);
    std::atomic<int> next{area.top};
    platform::inTwoThreads([&] {
        for (int top = next.fetch_add(kBand); top < area.bottom; top = next.fetch_add(kBand))
            blendLines(scaling, top, std::min(top + kBand, area.bottom));
    });
}

}  // namespace VSTGUI
