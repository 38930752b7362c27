// Draws a picture larger or smaller than it is.
#pragma once

#include "gui/graphics/pixel_buffer.h"

namespace VSTGUI {

// Blends the pixels `part` of `picture`, faded by alpha, within `clip`. The picture's corner (0, 0)
// lands on (x, y), and `step` of its pixels, from 1/3 to 3, go into one of the buffer. Enlarged, a
// pixel mixes the neighbours of its middle; made smaller, all that it covers. What lies outside
// `part` does not shine in. A pixel comes out the same whatever the clip.
void blendScaled(PixelBuffer& buffer, const IntRect& clip, const PixelBuffer& picture,
                 const IntRect& part, double x, double y, double step, uint32_t alpha);

}  // namespace VSTGUI
