// Draws a picture enlarged or reduced.
#include "gui/graphics/scale.h"
#include "platform/two_threads.h"

#include <algorithm>
#include <array>
#include <atomic>
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
    int begin;  // the first neighbour, perhaps beyond the edge
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
    taps.begin = static_cast<int>(std::clamp<double>(begin, first - kMostTaps, last));
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
typedef uint16_t WideFour __attribute__((vector_size(32)));
typedef uint8_t BytesOfFour __attribute__((vector_size(16)));
constexpr size_t kPair = 2;
constexpr size_t kBytes = 4;
constexpr uint16_t kHalf = kWhole / 2;

// The weights of two columns side by side, and where each column's neighbours begin.
struct ColumnPair {
    std::array<uint32_t, kPair> at;  // first bytes in a row with the edges repeated
    uint32_t weights;                // index of a PairWeights
};
using PairWeights = std::array<std::array<Wide, kMostTaps / kPair>, kPair>;  // of each column

Wide weightsOf(const Taps& column, size_t first) {
    constexpr uint64_t kEach = 0x0001000100010001u;
    return reinterpret_cast<Wide>(
        Words{kEach * column.weight[first], kEach * column.weight[first + 1]});
}

bool areEqual(const PairWeights& a, const PairWeights& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Rows of the picture, scaled horizontally. The buffer's lines need them from top to bottom, so a
// few rows are enough and each is made only once.
class AcrossRows {
  public:
    // `columns` are an even number.
    AcrossRows(const PixelBuffer& picture, const std::vector<Taps>& columns, int tapCount)
        : picture_(picture),
          first_(columns.front().begin),
          tapCount_(tapCount),
          pixels_(columns.back().begin + kMostTaps - first_),
          wide_(static_cast<size_t>(pixels_) * kBytes) {
        from_ = columns.front().at.front();
        to_ = columns.back().at.back() + 1;
        for (size_t x = 0; x < columns.size(); x += kPair) addPair(columns[x], columns[x + 1]);
        made_.fill(-1);
        for (auto& row : rows_) row.resize((columns.size() + kPair) * kBytes);
    }

    const uint16_t* row(int y) {
        const int slot = y % kMostTaps;
        if (made_[slot] != y) {
            isOpaque_[slot] =
                tapCount_ == 2 ? make<2>(y, rows_[slot]) : make<kMostTaps>(y, rows_[slot]);
            made_[slot] = y;
        }
        return rows_[slot].data();
    }
    // Of a row that was asked for lately.
    bool isOpaque(int y) const { return isOpaque_[y % kMostTaps]; }

  private:
    // Few weights differ, and what is read for each row should be little.
    void addPair(const Taps& left, const Taps& right) {
        ColumnPair pair;
        pair.at = {static_cast<uint32_t>(left.begin - first_) * uint32_t{kBytes},
                   static_cast<uint32_t>(right.begin - first_) * uint32_t{kBytes}};
        const PairWeights weights = {{{weightsOf(left, 0), weightsOf(left, kPair)},
                                      {weightsOf(right, 0), weightsOf(right, kPair)}}};
        constexpr size_t kLatest = 16;
        const size_t known = weights_.size();
        size_t at = known - std::min(known, kLatest);
        while (at < known && !areEqual(weights_[at], weights)) ++at;
        if (at == known) weights_.push_back(weights);
        pair.weights = static_cast<uint32_t>(at);
        pairs_.push_back(pair);
    }

    // Returns whether all pixels are opaque.
    template <int kTaps>
    bool make(int y, std::vector<uint16_t>& row) {
        widen(y);
        Wide common = ~Wide{};
        uint16_t* to = row.data();
        for (const ColumnPair& pair : pairs_) {
            const PairWeights& weights = weights_[pair.weights];
            Words low{}, high{};  // what the even and the odd neighbours give to each column
            Wide sum = Wide{} + kHalf;
            for (size_t i = 0; i < kTaps / kPair; ++i) {
                const auto left = reinterpret_cast<Words>(pixels(pair.at[0], i) * weights[0][i]);
                const auto right = reinterpret_cast<Words>(pixels(pair.at[1], i) * weights[1][i]);
                low = Words{left[0], right[0]};
                high = Words{left[1], right[1]};
                sum += reinterpret_cast<Wide>(low) + reinterpret_cast<Wide>(high);
            }
            sum >>= 8;
            common &= sum;
            std::memcpy(to, &sum, sizeof sum);
            to += kPair * kBytes;
        }
        constexpr uint16_t kOpaque = 255;
        return common[3] == kOpaque && common[7] == kOpaque;
    }

    // Neighbours beyond the edges repeat them.
    void widen(int y) {
        const auto* const from = reinterpret_cast<const uint8_t*>(picture_.row(y) + from_);
        uint16_t* const to = &wide_[static_cast<size_t>(from_ - first_) * kBytes];
        const size_t count = static_cast<size_t>(to_ - from_) * kBytes;
        for (size_t i = 0; i < count; ++i) to[i] = from[i];
        for (uint16_t* at = to; at != wide_.data(); at -= kBytes)
            std::copy(to, to + kBytes, at - kBytes);
        const uint16_t* const end = wide_.data() + wide_.size();
        for (uint16_t* at = to + count; at != end; at += kBytes)
            std::copy(to + count - kBytes, to + count, at);
    }

    Wide pixels(uint32_t at, size_t pair) const {
        Wide both;
        std::memcpy(&both, &wide_[at + pair * kPair * kBytes], sizeof both);
        return both;
    }

    const PixelBuffer& picture_;
    const int first_;  // column of the picture, or one beyond its edge
    const int tapCount_;
    const int pixels_;
    int from_ = 0;  // columns of the picture
    int to_ = 0;
    std::vector<ColumnPair> pairs_;
    std::vector<PairWeights> weights_;
    std::vector<uint16_t> wide_;  // the part of a row that is being scaled
    std::array<std::vector<uint16_t>, kMostTaps> rows_;
    std::array<int, kMostTaps> made_;
    std::array<bool, kMostTaps> isOpaque_{};
};
// Adds up the rows by their weights, from pixel to pixel. Sums of bytes fit, because the weights
// add up to kWhole.
template <int kTaps>
void addRows(const std::array<const uint16_t*, kMostTaps>& rows, const Taps& taps, uint32_t* line,
             size_t width) {
    constexpr size_t kFour = 4;
    const auto add = [&](size_t x) {
        WideFour sum = WideFour{} + kHalf;
        for (int i = 0; i < kTaps; ++i) {
            WideFour row;
            std::memcpy(&row, rows[i] + x * kBytes, sizeof row);
            sum += row * static_cast<uint16_t>(taps.weight[i]);
        }
        return __builtin_convertvector(sum >> 8, BytesOfFour);
    };
    size_t x = 0;
    for (; x + kFour <= width; x += kFour) {
        const BytesOfFour pixels = add(x);
        std::memcpy(line + x, &pixels, sizeof pixels);
    }
    if (x == width) return;
    const BytesOfFour rest = add(x);  // which the padding of rows permits
    std::memcpy(line + x, &rest, (width - x) * kBytes);
}

// One picture on its way into one area of a buffer.
struct Scaling {
    PixelBuffer& buffer;
    const IntRect& area;
    const PixelBuffer& picture;
    const IntRect& source;
    const std::vector<Taps>& columns;
    double y;
    double step;
    uint32_t alpha;
};

void blendLines(const Scaling& scaling, int top, int bottom) {
    const int tapCount = scaling.step <= 1 ? 2 : kMostTaps;
    const auto width = static_cast<size_t>(scaling.area.width());
    AcrossRows across(scaling.picture, scaling.columns, tapCount);
    std::vector<uint32_t> pixels(width);
    for (int line = top; line < bottom; ++line) {
        const Taps taps =
            tapsFor(line, scaling.y, scaling.step, scaling.source.top, scaling.source.bottom - 1);
        std::array<const uint16_t*, kMostTaps> rows{};
        bool replaces = scaling.alpha == 255;
        for (int i = 0; i < tapCount; ++i) {
            rows[i] = across.row(taps.at[i]);
            replaces = replaces && across.isOpaque(taps.at[i]);
        }
        uint32_t* const target = scaling.buffer.row(line) + scaling.area.left;
        uint32_t* const to = replaces ? target : pixels.data();
        tapCount == 2 ? addRows<2>(rows, taps, to, width)
                      : addRows<kMostTaps>(rows, taps, to, width);
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

    std::vector<Taps> columns;
    columns.reserve(static_cast<size_t>(area.width()) + 1);
    for (int column = area.left; column < area.right; ++column)
        columns.push_back(tapsFor(column, x, step, source.left, source.right - 1));
    if (columns.size() % kPair != 0) columns.push_back(columns.back());
    const Scaling scaling{buffer, area, picture, source, columns, y, step, alpha};
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
