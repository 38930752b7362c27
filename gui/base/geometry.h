// Points and rectangles in pixels; y grows downwards.
#pragma once

#include <cstdint>

namespace VSTGUI {

using CCoord = double;

struct CPoint {
    CPoint() = default;
    CPoint(CCoord x, CCoord y) : x(x), y(y) {}

    CPoint& operator()(CCoord newX, CCoord newY);
    CPoint& offset(CCoord dx, CCoord dy) { return operator()(x + dx, y + dy); }
    CPoint& offset(const CPoint& by) { return offset(by.x, by.y); }
    CPoint& offsetInverse(const CPoint& by) { return offset(-by.x, -by.y); }

    CPoint& operator+=(const CPoint& other) { return offset(other); }
    CPoint operator+(const CPoint& other) const { return {x + other.x, y + other.y}; }
    CPoint operator-(const CPoint& other) const { return {x - other.x, y - other.y}; }
    bool operator==(const CPoint& other) const { return x == other.x && y == other.y; }
    bool operator!=(const CPoint& other) const { return !(*this == other); }

    CCoord x = 0;
    CCoord y = 0;
};

// Left and top are inside the rectangle, right and bottom are outside. Methods that change the
// rectangle return it.
struct CRect {
    CRect() = default;
    CRect(CCoord left, CCoord top, CCoord right, CCoord bottom)
        : left(left), top(top), right(right), bottom(bottom) {}
    CRect(const CPoint& origin, const CPoint& size)
        : CRect(origin.x, origin.y, origin.x + size.x, origin.y + size.y) {}

    // Sorts the edges, unlike the constructor.
    CRect& operator()(CCoord newLeft, CCoord newTop, CCoord newRight, CCoord newBottom);

    CCoord getWidth() const { return right - left; }
    CCoord getHeight() const { return bottom - top; }
    CRect& setWidth(CCoord width);
    CRect& setHeight(CCoord height);
    CPoint getSize() const { return {getWidth(), getHeight()}; }
    CRect& setSize(const CPoint& size) { return setWidth(size.x).setHeight(size.y); }

    CPoint getTopLeft() const { return {left, top}; }
    CPoint getCenter() const { return {left + getWidth() / 2, top + getHeight() / 2}; }

    CRect& offset(CCoord dx, CCoord dy);
    CRect& offset(const CPoint& by) { return offset(by.x, by.y); }
    CRect& offsetInverse(const CPoint& by) { return offset(-by.x, -by.y); }
    CRect& inset(CCoord dx, CCoord dy);
    CRect& inset(const CPoint& by) { return inset(by.x, by.y); }
    CRect& extend(CCoord dx, CCoord dy) { return inset(-dx, -dy); }
    CRect& extend(const CPoint& by) { return extend(by.x, by.y); }
    CRect& moveTo(CCoord x, CCoord y) { return offset(x - left, y - top); }
    CRect& moveTo(const CPoint& to) { return moveTo(to.x, to.y); }
    CRect& originize() { return moveTo(0, 0); }
    CRect& centerInside(const CRect& other);
    CRect& normalize() { return operator()(left, top, right, bottom); }
    CRect& makeIntegral();             // floors left and top, rounds right and bottom up
    CRect& bound(const CRect& other);  // intersection; empty if there is none
    CRect& unite(const CRect& other);  // smallest rectangle around both

    bool isEmpty() const { return right <= left || bottom <= top; }
    bool pointInside(const CPoint& point) const;
    bool rectOverlap(const CRect& other) const;  // touching edges count

    bool operator==(const CRect& other) const;
    bool operator!=(const CRect& other) const { return !(*this == other); }

    CCoord left = 0;
    CCoord top = 0;
    CCoord right = 0;
    CCoord bottom = 0;
};

}  // namespace VSTGUI
