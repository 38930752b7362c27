// Draws a picture enlarged or reduced.
#include "gui/graphics/scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
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

// The bytes of two pixels, with room for a weight.
typedef uint16_t Wide __attribute__((vector_size(16)));
typedef uint64_t Words __attribute__((vector_size(16)));
typedef uint8_t Bytes __attribute__((vector_size(8)));
constexpr size_t kPair = 2;
constexpr size_t kBytes = 4;
constexpr uint16_t kHalf = kWhole / 2;

// What two columns side by side take from a row.
struct ColumnPair {
    std::array<Wide, kMostTaps> weight;
    std::array<std::array<uint32_t, kPair>, kMostTaps> at;  // first bytes
};

std::vector<ColumnPair> pairsOf(const std::vector<Taps>& columns, int first) {
    constexpr uint64_t kEach = 0x0001000100010001u;
    std::vector<ColumnPair> pairs(columns.size() / kPair);
    for (size_t x = 0; x < columns.size(); ++x) {
        ColumnPair& pair = pairs[x / kPair];
        for (int i = 0; i < kMostTaps; ++i) {
            auto words = reinterpret_cast<Words>(pair.weight[i]);
            words[x % kPair] = kEach * columns[x].weight[i];
            pair.weight[i] = reinterpret_cast<Wide>(words);
            pair.at[i][x % kPair] = static_cast<uint32_t>(columns[x].at[i] - first) * kBytes;
        }
    }
    return pairs;
}

// Rows of the picture, scaled horizontally. The buffer's lines need them from top to bottom, so a
// few rows are enough and each is made only once.
class AcrossRows {
  public:
    AcrossRows(const PixelBuffer& picture, const std::vector<Taps>& columns, int tapCount)
        : picture_(picture),
          first_(columns.front().at.front()),
          tapCount_(tapCount),
          pairs_(pairsOf(columns, first_)),
          wide_(static_cast<size_t>(columns.back().at.back() + 1 - first_) * kBytes) {
        made_.fill(-1);
        for (auto& row : rows_) row.resize(columns.size() * kBytes);
    }

    const uint16_t* row(int y) {
        const int slot = y % kMostTaps;
        if (made_[slot] != y) {
            tapCount_ == 2 ? make<2>(y, rows_[slot]) : make<kMostTaps>(y, rows_[slot]);
            made_[slot] = y;
        }
        return rows_[slot].data();
    }

  private:
    template <int kTaps>
    void make(int y, std::vector<uint16_t>& row) {
        const auto* const from = reinterpret_cast<const uint8_t*>(picture_.row(y) + first_);
        for (size_t i = 0; i < wide_.size(); ++i) wide_[i] = from[i];
        uint16_t* to = row.data();
        for (const ColumnPair& pair : pairs_) {
            Wide sum = Wide{} + kHalf;
            for (int i = 0; i < kTaps; ++i)
                sum += reinterpret_cast<Wide>(Words{pixel(pair.at[i][0]), pixel(pair.at[i][1])}) *
                       pair.weight[i];
            sum >>= 8;
            std::memcpy(to, &sum, sizeof sum);
            to += kPair * kBytes;
        }
    }

    uint64_t pixel(uint32_t at) const {
        uint64_t bytes;
        std::memcpy(&bytes, &wide_[at], sizeof bytes);
        return bytes;
    }

    const PixelBuffer& picture_;
    const int first_;  // column of the picture
    const int tapCount_;
    const std::vector<ColumnPair> pairs_;
    std::vector<uint16_t> wide_;  // the part of a row that is being scaled
    std::array<std::vector<uint16_t>, kMostTaps> rows_;
    std::array<int, kMostTaps> made_;
};

// Adds up the rows by their weights. Sums of bytes fit, because the weights add up to kWhole.
template <int kTaps>
void addRows(const std::array<const uint16_t*, kMostTaps>& rows, const Taps& taps,
             std::vector<uint32_t>& line) {
    constexpr size_t kStride = 4 * kPair;  // whole vectors, which the padding of lines permits
    auto* to = reinterpret_cast<uint8_t*>(line.data());
    for (size_t at = 0; at < line.size() * kBytes; at += kStride, to += kStride) {
        Wide sum = Wide{} + kHalf;
        for (int i = 0; i < kTaps; ++i) {
            Wide row;
            std::memcpy(&row, rows[i] + at, sizeof row);
            sum += row * static_cast<uint16_t>(taps.weight[i]);
        }
        const Bytes bytes = __builtin_convertvector(sum >> 8, Bytes);
        std::memcpy(to, &bytes, sizeof bytes);
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

    std::vector<Taps> columns;
    columns.reserve(static_cast<size_t>(area.width()));
    for (int column = area.left; column < area.right; ++column)
        columns.push_back(tapsFor(column, x, step, source.left, source.right - 1));
    if (columns.size() % kPair != 0) columns.push_back(columns.back());
    const int tapCount = step <= 1 ? 2 : kMostTaps;
    AcrossRows across(picture, columns, tapCount);
    std::vector<uint32_t> pixels(columns.size());
    for (int line = area.top; line < area.bottom; ++line) {
        const Taps taps = tapsFor(line, y, step, source.top, source.bottom - 1);
        std::array<const uint16_t*, kMostTaps> rows{};
        for (int i = 0; i < tapCount; ++i) rows[i] = across.row(taps.at[i]);
        tapCount == 2 ? addRows<2>(rows, taps, pixels) : addRows<kMostTaps>(rows, taps, pixels);
        blendRow(pixels.data(), buffer.row(line) + area.left, area.width(), alpha);
    }
}

}  // namespace VSTGUI
