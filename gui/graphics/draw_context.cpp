// Draws rectangles, lines, ellipses, text and pictures into a pixel buffer.
#include "gui/graphics/draw_context.h"
#include "gui/graphics/bitmap.h"
#include "gui/graphics/scale.h"
#include "gui/graphics/shapes.h"
#include "gui/graphics/text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace VSTGUI {
namespace {

uint32_t toByte(float fraction) {
    if (!(fraction > 0)) return 0;
    return static_cast<uint32_t>(std::min(fraction, 1.f) * 255 + 0.5f);
}

// Visits the pixels nearest to the line, both ends included (Bresenham).
template <typename Visit>
void walkLine(int x, int y, int toX, int toY, Visit visit) {
    const int dx = std::abs(toX - x);
    const int dy = -std::abs(toY - y);
    const int stepX = x < toX ? 1 : -1;
    const int stepY = y < toY ? 1 : -1;
    for (int64_t error = int64_t{dx} + dy;;) {
        visit(x, y);
        if (x == toX && y == toY) return;
        const int64_t doubled = 2 * error;
        if (doubled >= dy) {
            error += dy;
            x += stepX;
        }
        if (doubled <= dx) {
            error += dx;
            y += stepY;
        }
    }
}

}  // namespace

CDrawContext::CDrawContext(PixelBuffer& buffer, const IntRect& area, double zoom)
    : buffer_(buffer), zoom_(zoom) {
    state_.limit = area.common(buffer.bounds());
    state_.clip = state_.limit;
}

CPoint CDrawContext::placed(const CPoint& point) const {
    return {(point.x + state_.origin.x) * zoom_, (point.y + state_.origin.y) * zoom_};
}

CRect CDrawContext::placed(const CRect& rect) const {
    const CPoint corner = placed(rect.getTopLeft());
    const CPoint opposite = placed(CPoint(rect.right, rect.bottom));
    return {corner.x, corner.y, opposite.x, opposite.y};
}

void CDrawContext::setFont(const CFontRef font, CCoord size, int32_t style) {
    if (!font) return;
    state_.font = font;
    if (size <= 0 && style < 0) return;
    state_.font = makeOwned<CFontDesc>(*font);
    if (size > 0) state_.font->setSize(size);
    if (style >= 0) state_.font->setStyle(style);
}

void CDrawContext::setGlobalAlpha(float alpha) {
    state_.alpha = toByte(alpha);
}

void CDrawContext::setClipRect(const CRect& clip) {
    state_.clip = nearestPixels(placed(clip)).common(state_.limit);
}

CRect& CDrawContext::getClipRect(CRect& clip) const {
    const IntRect& area = state_.clip;
    clip = CRect(area.left / zoom_, area.top / zoom_, area.right / zoom_, area.bottom / zoom_);
    return clip.offsetInverse(state_.origin);
}

void CDrawContext::restoreGlobalState() {
    if (saved_.size() <= savedAround_) return;
    state_ = std::move(saved_.back());
    saved_.pop_back();
}

void CDrawContext::drawInside(const CRect& viewSize, float alpha,
                              const std::function<void()>& draw) {
    State inside;
    inside.origin = state_.origin;
    inside.limit = nearestPixels(placed(viewSize)).common(state_.limit);
    inside.clip = inside.limit;
    inside.viewAlpha = times255(state_.viewAlpha, toByte(alpha));
    if (inside.limit.isEmpty() || inside.viewAlpha == 0) return;

    const State around = std::exchange(state_, inside);
    const size_t savedAround = std::exchange(savedAround_, saved_.size());
    draw();
    saved_.resize(savedAround_);
    savedAround_ = savedAround;
    state_ = around;
}

void CDrawContext::drawFrom(const CPoint& origin, const std::function<void()>& draw) {
    const CPoint before = state_.origin;
    state_.origin += origin;
    draw();
    state_.origin = before;
}

uint32_t CDrawContext::fadedByState(CColor color) const {
    return faded(premultiplied(color), times255(state_.alpha, state_.viewAlpha));
}

int CDrawContext::ringWidth() const {
    return std::max(1, nearestPixel(strokeWidth()));
}

void CDrawContext::drawRect(const CRect& rect, CDrawStyle style) {
    const IntRect outer = nearestPixels(placed(rect));
    if (style != kDrawStroked)
        fillArea(buffer_, outer.common(state_.clip), fadedByState(state_.fill));
    if (style == kDrawFilled || outer.isEmpty() || state_.lineWidth <= 0) return;

    const int ring = std::min({ringWidth(), (outer.width() + 1) / 2, (outer.height() + 1) / 2});
    const IntRect inner{outer.left + ring, outer.top + ring, outer.right - ring,
                        outer.bottom - ring};
    const int middleTop = std::min(inner.top, outer.bottom);
    const int middleBottom = std::max(inner.bottom, middleTop);
    const IntRect sides[] = {
        {outer.left, outer.top, outer.right, middleTop},
        {outer.left, middleBottom, outer.right, outer.bottom},
        {outer.left, middleTop, inner.left, middleBottom},
        {std::max(inner.left, inner.right), middleTop, outer.right, middleBottom},
    };
    const uint32_t pixel = fadedByState(state_.frame);
    for (const IntRect& side : sides) fillArea(buffer_, side.common(state_.clip), pixel);
}

template <typename Shape>
void CDrawContext::drawShape(const IntRect& bounds, const Shape& outer, const Shape& inner,
                             CDrawStyle style) {
    const bool smooth = state_.mode.antialiasing();
    if (style != kDrawStroked)
        fillShape(buffer_, state_.clip, bounds, smooth, fadedByState(state_.fill), outer);
    if (style != kDrawFilled && state_.lineWidth > 0)
        fillShape(buffer_, state_.clip, bounds, smooth, fadedByState(state_.frame),
                  Ring<Shape>{outer, inner});
}

void CDrawContext::drawEllipse(const CRect& rect, CDrawStyle style) {
    const CRect outer = placed(rect);
    CRect inner = outer;
    inner.inset(strokeWidth(), strokeWidth());
    drawShape(allPixelsTouched(outer), Ellipse{outer}, Ellipse{inner}, style);
}

void CDrawContext::drawRoundRect(const CRect& rect, CCoord radius, CDrawStyle style) {
    const CRect outer = placed(rect);
    CRect inner = outer;
    inner.inset(strokeWidth(), strokeWidth());
    const double outerRadius = radius * zoom_;
    const double innerRadius = std::max(outerRadius - strokeWidth(), 0.0);
    drawShape(allPixelsTouched(outer), RoundedRect{outer, outerRadius},
              RoundedRect{inner, innerRadius}, style);
}

void CDrawContext::drawGraphicsPath(CGraphicsPath* path, PathDrawMode mode) {
    const CCoord beyond = mode == kPathStroked ? state_.lineWidth / 2 : 0;
    for (CRect ellipse : path->ellipses()) {
        ellipse.extend(beyond, beyond);
        drawEllipse(ellipse, mode == kPathStroked ? kDrawStroked : kDrawFilled);
    }
    if (mode != kPathStroked || state_.lineWidth <= 0) return;
    for (std::vector<CPoint> points : path->lines()) {
        for (CPoint& point : points) point = placed(point);
        strokeLines(buffer_, state_.clip, points, strokeWidth(), state_.mode.antialiasing(),
                    fadedByState(state_.frame));
    }
}

void CDrawContext::drawLine(const CPoint& from, const CPoint& to) {
    if (state_.lineWidth <= 0) return;
    CPoint start = placed(from);
    CPoint end = placed(to);
    const uint32_t pixel = fadedByState(state_.frame);
    if (!state_.mode.antialiasing() && ringWidth() == 1) {
        const IntRect visible = state_.clip.common(buffer_.bounds());
        const auto plot = [&](int x, int y) {
            if (x < visible.left || x >= visible.right || y < visible.top || y >= visible.bottom)
                return;
            uint32_t& target = buffer_.row(y)[x];
            target = over(pixel, target);
        };
        const auto column = [](CCoord c) { return nearestPixel(std::floor(c)); };
        walkLine(column(start.x), column(start.y), column(end.x), column(end.y), plot);
        return;
    }
    if (state_.mode.integralMode()) {  // run through pixel centres
        start.offset(zoom_ / 2, zoom_ / 2);
        end.offset(zoom_ / 2, zoom_ / 2);
    }
    CRect bounds;
    bounds(start.x, start.y, end.x, end.y);
    bounds.extend(strokeWidth(), strokeWidth());
    fillShape(buffer_, state_.clip, allPixelsTouched(bounds), state_.mode.antialiasing(), pixel,
              ThickLine{start, end, strokeWidth()});
}

void CDrawContext::drawBitmap(CBitmap* picture, const CRect& dest, const CPoint& offset,
                              float alpha) {
    if (!picture || !picture->isLoaded()) return;
    const auto best = picture->getBestPlatformBitmapForScaleFactor(zoom_);
    const double scale = best->getScaleFactor();
    const CRect place = placed(dest);
    const IntRect clip = nearestPixels(place).common(state_.clip);
    const uint32_t stateAlpha = times255(state_.alpha, state_.viewAlpha);
    const uint32_t pictureAlpha = times255(stateAlpha, toByte(alpha));
    if (scale == zoom_) {
        const int top = nearestPixel(place.top) - nearestPixel(offset.y * zoom_);
        blendPicture(buffer_, clip, best->pixels().rows(clip.top - top, clip.bottom - top),
                     nearestPixel(place.left) - nearestPixel(offset.x * zoom_), top, pictureAlpha);
        return;
    }
    const IntRect part = nearestPixels(CRect(offset.x * scale, offset.y * scale,
                                             (offset.x + dest.getWidth()) * scale,
                                             (offset.y + dest.getHeight()) * scale));
    blendScaled(buffer_, clip, best->pixels().rows(part.top, part.bottom), part,
                place.left - offset.x * zoom_, place.top - offset.y * zoom_, scale / zoom_,
                pictureAlpha);
}

void CDrawContext::drawString(UTF8StringPtr text, const CRect& rect, CHoriTxtAlign align,
                              bool antialias) {
    if (!text || !state_.font) return;
    const double spare = rect.getWidth() - (align == kLeftText ? 0 : getStringWidth(text));
    const double x = align == kLeftText    ? rect.left
                     : align == kRightText ? rect.left + spare
                                           : rect.left + spare / 2;
    const double margin = (rect.getHeight() - capitalHeight(*state_.font)) / 2;
    drawString(text, CPoint(x, rect.bottom - margin), antialias);
}

void CDrawContext::drawString(UTF8StringPtr text, const CPoint& point, bool antialias) {
    if (!text || !state_.font) return;
    drawText(buffer_, state_.clip, *state_.font, text, placed(point), zoom_,
             fadedByState(state_.text), antialias);
}

CCoord CDrawContext::getStringWidth(UTF8StringPtr text) const {
    return text && state_.font ? textWidth(*state_.font, text) : 0;
}

}  // namespace VSTGUI
