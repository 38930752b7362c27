// Fills ellipses and strokes lines.
#include "gui/graphics/shapes.h"

#include <bitset>

namespace VSTGUI {
namespace {

// Neighbouring samples of one line. The end is outside.
struct Samples {
    int begin;
    int end;
};

// The samples from `first` to `last` that an ellipse holds. A guess that rounding may have put
// beside an end is corrected.
template <int kSamples>  // of a pixel, along each side
Samples samplesAt(double y, const Ellipse& ellipse, int first, int last) {
    const CRect& rect = ellipse.rect;
    const double w = rect.getWidth();
    const double h = rect.getHeight();
    if (w <= 0 || h <= 0) return {last, first};
    const double dy = (2 * y - rect.top - rect.bottom) * w;
    const double rise = dy * dy;
    const double limit = w * w * h * h;
    constexpr double share = 1.0 / kSamples;
    const auto isInside = [&](int sample) {  // as the ellipse itself says
        const double dx = (2 * ((sample + 0.5) * share) - rect.left - rect.right) * h;
        return dx * dx + rise <= limit;
    };
    const double middle = (rect.left + rect.right) / 2 * kSamples;
    const auto nearest = [&](double sample) {
        return static_cast<int>(std::clamp<double>(sample, first, last - 1));
    };
    const double half = std::sqrt(std::max(limit - rise, 0.0)) / (2 * h) * kSamples;
    int begin = nearest(middle - half + 0.5);
    int end = nearest(middle + half - 0.5);
    // All samples between two that are inside are inside, too.
    const int known = std::clamp(nearest(middle), begin, std::max(begin, end));
    for (const int sample : {known, known - 1, known + 1}) {
        if (sample < first || sample >= last || !isInside(sample)) continue;
        begin = std::min(begin, sample);
        end = std::max(end, sample);
        while (!isInside(begin)) ++begin;
        while (begin > first && isInside(begin - 1)) --begin;
        while (!isInside(end)) --end;
        while (end + 1 < last && isInside(end + 1)) ++end;
        return {begin, end + 1};
    }
    return {last, first};
}

template <int kSamples>  // of a pixel, along each side
void fill(PixelBuffer& buffer, const IntRect& area, uint32_t pixel, const Ellipse& ellipse) {
    const int first = area.left * kSamples;
    const int last = area.right * kSamples;
    for (int y = area.top; y < area.bottom; ++y) {
        Samples lines[kSamples];
        Samples any{last, first};
        Samples all{first, last};
        for (int j = 0; j < kSamples; ++j) {
            lines[j] = samplesAt<kSamples>(y + (j + 0.5) / kSamples, ellipse, first, last);
            any = {std::min(any.begin, lines[j].begin), std::max(any.end, lines[j].end)};
            all = {std::max(all.begin, lines[j].begin), std::min(all.end, lines[j].end)};
        }
        if (any.begin >= any.end) continue;
        uint32_t* const row = buffer.row(y);
        const int end = (any.end + kSamples - 1) / kSamples;
        const int wholeEnd = all.end / kSamples;
        for (int x = any.begin / kSamples; x < end; ++x) {
            if (x * kSamples >= all.begin && x < wholeEnd) {
                if (pixel >> 24 == 255) {
                    std::fill(row + x, row + wholeEnd, pixel);
                } else {
                    for (int i = x; i < wholeEnd; ++i) row[i] = over(pixel, row[i]);
                }
                x = wholeEnd;
                if (x == end) break;
            }
            int hits = 0;
            for (int j = 0; j < kSamples; ++j)
                hits += std::max(std::min(lines[j].end, (x + 1) * kSamples) -
                                     std::max(lines[j].begin, x * kSamples),
                                 0);
            const int coverage = (hits * 255 + kSamples * kSamples / 2) / (kSamples * kSamples);
            if (hits) row[x] = over(faded(pixel, coverage), row[x]);
        }
    }
}

}  // namespace

void fillShape(PixelBuffer& buffer, const IntRect& clip, const IntRect& bounds, bool antialias,
               uint32_t pixel, const Ellipse& ellipse) {
    const IntRect area = bounds.common(clip).common(buffer.bounds());
    if (area.isEmpty()) return;
    antialias ? fill<4>(buffer, area, pixel, ellipse) : fill<1>(buffer, area, pixel, ellipse);
}

void strokeLines(PixelBuffer& buffer, const IntRect& clip, const std::vector<CPoint>& points,
                 double width, bool antialias, uint32_t pixel) {
    const double radius = width / 2;
    const auto pixelsAround = [&](CRect bounds) {
        bounds.extend(radius, radius);
        return allPixelsTouched(bounds).common(clip).common(buffer.bounds());
    };
    if (points.empty()) return;
    CRect bounds(points[0], CPoint());
    for (const CPoint& point : points) {
        bounds = {std::min(bounds.left, point.x), std::min(bounds.top, point.y),
                  std::max(bounds.right, point.x), std::max(bounds.bottom, point.y)};
    }
    const IntRect area = pixelsAround(bounds);
    if (area.isEmpty()) return;
    // One bit per sample of a pixel: each piece of the line adds those that it holds.
    const int samples = antialias ? 4 : 1;
    constexpr uint16_t kAll = 0xFFFF;
    std::vector<uint16_t> held(static_cast<size_t>(area.width()) * area.height());
    const auto hitsAt = [&](int x, int y) -> uint16_t& {
        return held[static_cast<size_t>(y - area.top) * area.width() + x - area.left];
    };
    const size_t pieces = std::max<size_t>(points.size() - 1, 1);  // one point is a dot
    for (size_t k = 0; k < pieces; ++k) {
        const CPoint& from = points[k];
        const CPoint& to = points[std::min(k + 1, points.size() - 1)];
        const CPoint along = to - from;
        const double square = along.x * along.x + along.y * along.y;
        const auto distance = [&](double x, double y) {  // squared
            const CPoint point(x - from.x, y - from.y);
            const double share =
                square > 0 ? std::clamp((point.x * along.x + point.y * along.y) / square, 0.0, 1.0)
                           : 0.0;
            const CPoint aside(point.x - share * along.x, point.y - share * along.y);
            return aside.x * aside.x + aside.y * aside.y;
        };
        constexpr double kToCorner = 0.75;  // of a pixel, from its centre
        const double reach = (radius + kToCorner) * (radius + kToCorner);
        CRect piece;
        piece(from.x, from.y, to.x, to.y);
        const IntRect part = pixelsAround(piece);
        for (int y = part.top; y < part.bottom; ++y) {
            for (int x = part.left; x < part.right; ++x) {
                uint16_t& hits = hitsAt(x, y);
                if (hits == kAll || distance(x + 0.5, y + 0.5) > reach) continue;
                for (int j = 0; j < samples; ++j) {
                    for (int i = 0; i < samples; ++i) {
                        const bool isHeld = distance(x + (i + 0.5) / samples,
                                                     y + (j + 0.5) / samples) <= radius * radius;
                        if (isHeld) hits |= 1u << (j * samples + i);
                    }
                }
            }
        }
    }
    for (int y = area.top; y < area.bottom; ++y) {
        uint32_t* const row = buffer.row(y);
        for (int x = area.left; x < area.right; ++x) {
            const auto hits = static_cast<int>(std::bitset<16>(hitsAt(x, y)).count());
            const int coverage = (hits * 255 + samples * samples / 2) / (samples * samples);
            if (hits > 0) row[x] = over(faded(pixel, coverage), row[x]);
        }
    }
}

}  // namespace VSTGUI
