// Fills ellipses.
#include "gui/graphics/shapes.h"

namespace VSTGUI {
namespace {

constexpr int kMostLines = 4;  // of samples in a pixel

// Neighbouring samples of one line. The end is outside.
struct Samples {
    int begin;
    int end;
};

// The samples from `first` to `last` that an ellipse holds. A guess that rounding may have put
// beside an end is corrected.
Samples samplesAt(double y, const Ellipse& ellipse, int samples, int first, int last) {
    const auto isInside = [&](int sample) { return ellipse((sample + 0.5) / samples, y); };
    const CRect& rect = ellipse.rect;
    const double middle = (rect.left + rect.right) / 2 * samples;
    const auto nearest = [&](double sample) {
        return static_cast<int>(std::clamp<double>(sample, first, last - 1));
    };
    int known = nearest(std::floor(middle));
    if (!isInside(known)) {
        if (known > first && isInside(known - 1)) {
            --known;
        } else if (known + 1 < last && isInside(known + 1)) {
            ++known;
        } else {
            return {last, first};
        }
    }

    const double height = (2 * y - rect.top - rect.bottom) / rect.getHeight();
    const double half =
        rect.getWidth() / 2 * samples * std::sqrt(std::max(1 - height * height, 0.));
    int begin = std::min(nearest(middle - half), known);
    while (!isInside(begin)) ++begin;
    while (begin > first && isInside(begin - 1)) --begin;
    int end = std::max(nearest(middle + half), known);
    while (!isInside(end)) --end;
    while (end + 1 < last && isInside(end + 1)) ++end;
    return {begin, end + 1};
}

}  // namespace

void fillShape(PixelBuffer& buffer, const IntRect& clip, const IntRect& bounds, bool antialias,
               uint32_t pixel, const Ellipse& ellipse) {
    const IntRect area = bounds.common(clip).common(buffer.bounds());
    if (area.isEmpty()) return;
    const int samples = antialias ? kMostLines : 1;
    const int first = area.left * samples;
    const int last = area.right * samples;
    for (int y = area.top; y < area.bottom; ++y) {
        Samples lines[kMostLines];
        Samples any{last, first};
        Samples all{first, last};
        for (int j = 0; j < samples; ++j) {
            lines[j] = samplesAt(y + (j + 0.5) / samples, ellipse, samples, first, last);
            any = {std::min(any.begin, lines[j].begin), std::max(any.end, lines[j].end)};
            all = {std::max(all.begin, lines[j].begin), std::min(all.end, lines[j].end)};
        }
        if (any.begin >= any.end) continue;
        uint32_t* const row = buffer.row(y);
        const int end = (any.end + samples - 1) / samples;
        const int wholeEnd = all.end / samples;
        for (int x = any.begin / samples; x < end; ++x) {
            if (x * samples >= all.begin && x < wholeEnd) {
                for (; x < wholeEnd; ++x) row[x] = over(pixel, row[x]);
                if (x == end) break;
            }
            int hits = 0;
            for (int j = 0; j < samples; ++j)
                hits += std::max(std::min(lines[j].end, (x + 1) * samples) -
                                     std::max(lines[j].begin, x * samples),
                                 0);
            const int coverage = (hits * 255 + samples * samples / 2) / (samples * samples);
            if (hits) row[x] = over(faded(pixel, coverage), row[x]);
        }
    }
}

}  // namespace VSTGUI
