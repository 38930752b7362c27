// Fills shapes that are defined by a test of points. Smooth edges take sixteen samples per pixel.
#pragma once

#include "gui/graphics/pixel_buffer.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace VSTGUI {

struct Ellipse {
    CRect rect;

    bool operator()(double x, double y) const {
        const double w = rect.getWidth();
        const double h = rect.getHeight();
        if (w <= 0 || h <= 0) return false;
        const double dx = (2 * x - rect.left - rect.right) * h;
        const double dy = (2 * y - rect.top - rect.bottom) * w;
        return dx * dx + dy * dy <= w * w * h * h;
    }
};

// A straight line with square caps, which extend it by half its width at both ends.
struct ThickLine {
    CPoint from;
    CPoint to;
    double width;

    bool operator()(double x, double y) const {
        const CPoint along = to - from;
        const CPoint point(x - from.x, y - from.y);
        const double length = std::sqrt(along.x * along.x + along.y * along.y);
        if (length == 0) return std::max(std::abs(point.x), std::abs(point.y)) <= width / 2;
        const double forward = (point.x * along.x + point.y * along.y) / length;
        const double aside = (point.x * along.y - point.y * along.x) / length;
        return std::abs(aside) <= width / 2 && forward >= -width / 2 &&
               forward <= length + width / 2;
    }
};

// Whether a shape may meet the pixel around this centre. Most tell no more than their bounds do.
template <typename Shape>
bool mayMeet(const Shape&, double, double) {
    return true;
}

inline bool mayMeet(const ThickLine& line, double x, double y) {
    constexpr double kToCorner = 0.75;  // of a pixel, from its centre
    const CPoint along = line.to - line.from;
    const double aside = (x - line.from.x) * along.y - (y - line.from.y) * along.x;
    const double reach = line.width / 2 + kToCorner;
    return aside * aside <= reach * reach * (along.x * along.x + along.y * along.y) ||
           along == CPoint();
}

// `inside(x, y)` tells whether a point in pixel coordinates belongs to the shape.
template <typename Inside>
void fillShape(PixelBuffer& buffer, const IntRect& clip, const IntRect& bounds, bool antialias,
               uint32_t pixel, Inside inside) {
    const IntRect area = bounds.common(clip).common(buffer.bounds());
    const int samples = antialias ? 4 : 1;
    for (int y = area.top; y < area.bottom; ++y) {
        uint32_t* const row = buffer.row(y);
        for (int x = area.left; x < area.right; ++x) {
            if (!mayMeet(inside, x + 0.5, y + 0.5)) continue;
            int hits = 0;
            for (int j = 0; j < samples; ++j)
                for (int i = 0; i < samples; ++i)
                    hits += inside(x + (i + 0.5) / samples, y + (j + 0.5) / samples);
            const int coverage = (hits * 255 + samples * samples / 2) / (samples * samples);
            if (hits) row[x] = over(faded(pixel, coverage), row[x]);
        }
    }
}

// The samples of a line that an ellipse holds are neighbours, so only the ends are looked for.
void fillShape(PixelBuffer& buffer, const IntRect& clip, const IntRect& bounds, bool antialias,
               uint32_t pixel, const Ellipse& ellipse);

// A line through points, with round joints and ends. Where it meets itself it is not thicker.
void strokeLines(PixelBuffer& buffer, const IntRect& clip, const std::vector<CPoint>& points,
                 double width, bool antialias, uint32_t pixel);

struct RoundedRect {
    CRect rect;
    double radius;

    bool operator()(double x, double y) const {
        if (!rect.pointInside(CPoint(x, y))) return false;
        const double r = std::min({radius, rect.getWidth() / 2, rect.getHeight() / 2});
        const double dx = std::max({rect.left + r - x, x - (rect.right - r), 0.0});
        const double dy = std::max({rect.top + r - y, y - (rect.bottom - r), 0.0});
        return dx * dx + dy * dy <= r * r;
    }
};

// The points inside the outer shape but outside the inner one.
template <typename Shape>
struct Ring {
    Shape outer;
    Shape inner;

    bool operator()(double x, double y) const { return outer(x, y) && !inner(x, y); }
};

}  // namespace VSTGUI
