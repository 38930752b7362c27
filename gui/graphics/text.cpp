// Measures and draws text with the embedded sans-serif faces.
#include "gui/graphics/text.h"
#include "platform/glyphs.h"

#include <algorithm>

namespace VSTGUI {
namespace {

using platform::SizedFace;

constexpr double kLargestSize = 512;  // before zooming; limits what a skin can ask for

SizedFace faceFor(const CFontDesc& font, double zoom = 1) {
    const int32_t style = font.getStyle();
    const double size = std::clamp(font.getSize(), 0.0, kLargestSize);
    return {(style & kBoldFace) != 0, (style & kItalicFace) != 0, size * zoom};
}

// Blends one glyph with its origin at (x, y).
void drawGlyph(PixelBuffer& buffer, const IntRect& clip, const SizedFace& face, int glyph, double x,
               int y, uint32_t pixel, bool antialias) {
    const platform::GlyphPlace there = face.place(glyph, x, y);
    const IntRect box{there.left, there.top, there.right, there.bottom};
    const IntRect area = box.common(clip).common(buffer.bounds());
    if (area.isEmpty()) return;

    const std::vector<uint8_t> coverage = face.coverage(glyph, there);
    for (int line = area.top; line < area.bottom; ++line) {
        const uint8_t* const from =
            coverage.data() + static_cast<size_t>(line - box.top) * box.width();
        uint32_t* const to = buffer.row(line);
        for (int i = area.left; i < area.right; ++i) {
            uint32_t alpha = from[i - box.left];
            if (!antialias) alpha = alpha < 128 ? 0 : 255;
            if (alpha) to[i] = over(faded(pixel, alpha), to[i]);
        }
    }
}

}  // namespace

double textWidth(const CFontDesc& font, const std::string& utf8) {
    return faceFor(font).widthOf(utf8);
}

double capitalHeight(const CFontDesc& font) {
    const SizedFace face = faceFor(font);
    return face.toPixels(face.capitalHeight());
}

void drawText(PixelBuffer& buffer, const IntRect& clip, const CFontDesc& font,
              const std::string& utf8, CPoint baseline, double zoom, uint32_t pixel,
              bool antialias) {
    const SizedFace face = faceFor(font, zoom);
    if (face.isEmpty() || clip.isEmpty()) return;

    const int y = nearestPixel(baseline.y);
    const int64_t units = face.forEachGlyph(utf8, [&](int glyph, int64_t before) {
        const double x = baseline.x + face.toPixels(before);
        // Skips invisible glyphs, and keeps the conversion to whole pixels in range.
        if (x > clip.left - 4 * face.size() && x < clip.right + face.size())
            drawGlyph(buffer, clip, face, glyph, x, y, pixel, antialias);
    });

    const auto drawRule = [&](double aboveBaseline) {
        const int thickness = std::max(1, nearestPixel(face.size() / 14));
        const int top = nearestPixel(y - aboveBaseline * face.size());
        const double right = baseline.x + face.toPixels(units);
        const IntRect rule{nearestPixel(baseline.x), top, nearestPixel(right), top + thickness};
        fillArea(buffer, rule.common(clip), pixel);
    };
    if (font.getStyle() & kUnderlineFace) drawRule(-0.1);
    if (font.getStyle() & kStrikethroughFace) drawRule(0.27);
}

}  // namespace VSTGUI
