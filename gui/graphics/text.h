// Measures and draws text with the embedded sans-serif faces, identically on every system.
#pragma once

#include "gui/graphics/font.h"
#include "gui/graphics/pixel_buffer.h"

namespace VSTGUI {

// Sum of the advance widths in pixels, without kerning.
double textWidth(const CFontDesc& font, const std::string& utf8);

// Height of a capital letter in pixels.
double capitalHeight(const CFontDesc& font);

// Blends the text into `clip` at `zoom` times the font's size. `baseline` is the left end of the
// baseline in buffer pixels. Glyphs are placed on whole rows and quarter columns.
void drawText(PixelBuffer& buffer, const IntRect& clip, const CFontDesc& font,
              const std::string& utf8, CPoint baseline, double zoom, uint32_t pixel,
              bool antialias);

}  // namespace VSTGUI
