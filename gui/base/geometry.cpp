// Points and rectangles in pixels.
#include "gui/base/geometry.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {

CPoint& CPoint::operator()(CCoord newX, CCoord newY) {
    x = newX;
    y = newY;
    return *this;
}

CRect& CRect::operator()(CCoord newLeft, CCoord newTop, CCoord newRight, CCoord newBottom) {
    return *this = CRect(std::min(newLeft, newRight), std::min(newTop, newBottom),
                         std::max(newLeft, newRight), std::max(newTop, newBottom));
}

CRect& CRect::setWidth(CCoord width) {
    right = left + width;
    return *this;
}

CRect& CRect::setHeight(CCoord height) {
    bottom = top + height;
    return *this;
}

CRect& CRect::offset(CCoord dx, CCoord dy) {
    return *this = CRect(left + dx, top + dy, right + dx, bottom + dy);
}

CRect& CRect::inset(CCoord dx, CCoord dy) {
    return *this = CRect(left + dx, top + dy, right - dx, bottom - dy);
}

CRect& CRect::centerInside(const CRect& other) {
    const CPoint to = other.getCenter() - getCenter();
    return offset(to);
}

CRect& CRect::makeIntegral() {
    return *this = CRect(std::floor(left), std::floor(top), std::ceil(right), std::ceil(bottom));
}

CRect& CRect::bound(const CRect& other) {
    left = std::max(left, other.left);
    top = std::max(top, other.top);
    right = std::max(left, std::min(right, other.right));
    bottom = std::max(top, std::min(bottom, other.bottom));
    return *this;
}

CRect& CRect::unite(const CRect& other) {
    return *this = CRect(std::min(left, other.left), std::min(top, other.top),
                         std::max(right, other.right), std::max(bottom, other.bottom));
}

bool CRect::pointInside(const CPoint& point) const {
    return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
}

bool CRect::rectOverlap(const CRect& other) const {
    return right >= other.left && left <= other.right && bottom >= other.top && top <= other.bottom;
}

bool CRect::operator==(const CRect& other) const {
    return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
}

}  // namespace VSTGUI
