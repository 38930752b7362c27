// Measures and rasterises the glyphs of the embedded faces, alike on every system.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/utf8.h"

struct stbtt_fontinfo;

namespace platform {

// Where a glyph's pixels come to lie; right and bottom are outside.
struct GlyphPlace {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    float shift = 0;  // of the outline within its first column, 0..1

    int width() const { return right - left; }
    int height() const { return bottom - top; }
};

// One embedded face at one size, the em height in pixels. Any thread.
class SizedFace {
  public:
    SizedFace(bool bold, bool italic, double size);

    bool isEmpty() const { return !(size_ > 0); }
    double size() const { return size_; }
    double toPixels(int64_t fontUnits) const {
        return static_cast<double>(scale_) * static_cast<double>(fontUnits);
    }

    int glyphOf(char32_t character) const;
    // Both in units of the font.
    int advance(int glyph) const;
    int capitalHeight() const;

    // With the glyph's origin at x, y: glyphs stand on whole rows and on quarters of a column.
    GlyphPlace place(int glyph, double x, int y) const;
    // 0..255 a pixel of the place, row by row from the top.
    std::vector<uint8_t> coverage(int glyph, const GlyphPlace& place) const;

    // Calls use(glyph, units) for each glyph of the text, `units` being the sum of the advance
    // widths before it, without kerning; returns the sum of all. Control characters are left out.
    template <typename Use>
    int64_t forEachGlyph(const std::string& text, Use use) const {
        int64_t units = 0;
        for (size_t position = 0; position < text.size();) {
            const char32_t character = utf8::next(text, position);
            if (character < ' ') continue;
            const int glyph = glyphOf(character);
            use(glyph, units);
            units += advance(glyph);
        }
        return units;
    }
    // The width of the text in pixels.
    double widthOf(const std::string& text) const {
        return toPixels(forEachGlyph(text, [](int, int64_t) {}));
    }

  private:
    const stbtt_fontinfo& face_;
    double size_;
    float scale_;
};

}  // namespace platform
