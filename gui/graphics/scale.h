// Enlarges a finished picture smoothly.
#pragma once

#include "gui/graphics/pixel_buffer.h"

namespace VSTGUI {

constexpr double kSmallestZoom = 1;
constexpr double kLargestZoom = 3;

// Edge length after zooming, in pixels.
int zoomedLength(int length, double zoom);

// The part of the enlarged picture that depends on `area` of the source.
IntRect zoomedArea(const IntRect& area, const PixelBuffer& source, const PixelBuffer& target);

// Writes `area` of `target`, the whole source stretched to its size: linear between the middles of
// the source's pixels, in integers.
void scaleArea(const PixelBuffer& source, PixelBuffer& target, const IntRect& area);

}  // namespace VSTGUI
