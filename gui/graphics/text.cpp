// Measures and draws text with the embedded sans-serif faces.
#include "gui/graphics/text.h"
#include "gui/graphics/embedded_fonts.h"

#include <algorithm>
#include <cmath>
#include <vector>

#define STBTT_STATIC
#define STB_TRUETYPE_IMPLEMENTATION
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb_truetype.h>
#pragma GCC diagnostic pop

namespace VSTGUI {
namespace {

constexpr double kLargestSize = 512;  // before zooming; keeps glyph bitmaps small

// One embedded face at one size.
class SizedFace {
  public:
    explicit SizedFace(const CFontDesc& font, double zoom = 1)
        : face_(faceFor(font.getStyle())),
          size_(std::clamp(font.getSize(), 0.0, kLargestSize) * zoom),
          scale_(stbtt_ScaleForMappingEmToPixels(&face_, static_cast<float>(size_))) {}

    bool isEmpty() const { return !(size_ > 0); }
    double size() const { return size_; }

    double toPixels(int64_t fontUnits) const {
        return static_cast<double>(scale_) * static_cast<double>(fontUnits);
    }

    int glyphOf(char32_t character) const {
        return stbtt_FindGlyphIndex(&face_, static_cast<int>(character));
    }

    int advance(int glyph) const {
        int width = 0;
        int bearing = 0;
        stbtt_GetGlyphHMetrics(&face_, glyph, &width, &bearing);
        return width;
    }

    int capitalHeight() const {
        int left = 0, bottom = 0, right = 0, top = 0;
        stbtt_GetCodepointBox(&face_, 'H', &left, &bottom, &right, &top);
        return top;
    }

    // Blends one glyph whose origin is `x`, `y`.
    void drawGlyph(PixelBuffer& buffer, const IntRect& clip, int glyph, double x, int y,
                   uint32_t pixel, bool antialias) const;

  private:
    static const stbtt_fontinfo& faceFor(int32_t style);

    const stbtt_fontinfo& face_;
    double size_;
    float scale_;
};

const stbtt_fontinfo& SizedFace::faceFor(int32_t style) {
    struct Faces {
        Faces() {
            for (int i = 0; i < 4; ++i)
                stbtt_InitFont(&faces[i], embeddedFont((i & 1) != 0, (i & 2) != 0), 0);
        }
        stbtt_fontinfo faces[4];
    };
    static const Faces all;
    return all.faces[((style & kBoldFace) ? 1 : 0) + ((style & kItalicFace) ? 2 : 0)];
}

void SizedFace::drawGlyph(PixelBuffer& buffer, const IntRect& clip, int glyph, double x, int y,
                          uint32_t pixel, bool antialias) const {
    const double snapped = std::floor(x * 4 + 0.5) / 4;
    const int column = static_cast<int>(std::floor(snapped));
    const float shift = static_cast<float>(snapped - column);

    IntRect box;
    stbtt_GetGlyphBitmapBoxSubpixel(&face_, glyph, scale_, scale_, shift, 0, &box.left, &box.top,
                                    &box.right, &box.bottom);
    const IntRect there{box.left + column, box.top + y, box.right + column, box.bottom + y};
    const IntRect area = there.common(clip).common(buffer.bounds());
    if (area.isEmpty()) return;

    std::vector<uint8_t> coverage(static_cast<size_t>(box.width()) * box.height());
    stbtt_MakeGlyphBitmapSubpixel(&face_, coverage.data(), box.width(), box.height(), box.width(),
                                  scale_, scale_, shift, 0, glyph);
    for (int line = area.top; line < area.bottom; ++line) {
        const uint8_t* const from =
            coverage.data() + static_cast<size_t>(line - there.top) * box.width();
        uint32_t* const to = buffer.row(line);
        for (int i = area.left; i < area.right; ++i) {
            uint32_t alpha = from[i - there.left];
            if (!antialias) alpha = alpha < 128 ? 0 : 255;
            if (alpha) to[i] = over(faded(pixel, alpha), to[i]);
        }
    }
}

template <typename Use>
void forEachGlyph(const SizedFace& face, const std::string& utf8, Use use) {
    for (size_t position = 0; position < utf8.size();) {
        const char32_t character = utf8::next(utf8, position);
        if (character >= ' ') use(face.glyphOf(character));
    }
}

}  // namespace

double textWidth(const CFontDesc& font, const std::string& utf8) {
    const SizedFace face(font);
    int64_t units = 0;
    forEachGlyph(face, utf8, [&](int glyph) { units += face.advance(glyph); });
    return face.toPixels(units);
}

double capitalHeight(const CFontDesc& font) {
    const SizedFace face(font);
    return face.toPixels(face.capitalHeight());
}

void drawText(PixelBuffer& buffer, const IntRect& clip, const CFontDesc& font,
              const std::string& utf8, CPoint baseline, double zoom, uint32_t pixel,
              bool antialias) {
    const SizedFace face(font, zoom);
    if (face.isEmpty() || clip.isEmpty()) return;

    const int y = nearestPixel(baseline.y);
    int64_t units = 0;
    forEachGlyph(face, utf8, [&](int glyph) {
        const double x = baseline.x + face.toPixels(units);
        units += face.advance(glyph);
        // Also keeps the conversion to whole pixels in range.
        if (x > clip.left - 4 * face.size() && x < clip.right + face.size())
            face.drawGlyph(buffer, clip, glyph, x, y, pixel, antialias);
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
