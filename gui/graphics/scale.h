// Draws a picture enlarged or reduced.
#pragma once

#include "gui/graphics/pixel_buffer.h"

namespace VSTGUI {

// Blends the pixels `part` of `picture`, faded by alpha, into `clip`. The picture's corner (0, 0)
// lands on (x, y). `step` is the number of picture pixels per buffer pixel, 1/3..3. When enlarging,
// a buffer pixel mixes the pixels around its centre; when reducing, all pixels that it covers.
// Pixels outside `part` have no influence. The clip does not change the value of a pixel.
void blendScaled(PixelBuffer& buffer, const IntRect& clip, const PixelBuffer& picture,
                 const IntRect& part, double x, double y, double step, uint32_t alpha);

}  // namespace VSTGUI
