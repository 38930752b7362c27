// Measures and rasterises glyphs of the embedded faces, with the same result on every system.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/utf8.h"

struct stbtt_fontinfo;

namespace platform {

// The pixels a glyph covers; right and bottom are exclusive.
struct GlyphPlace {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    float shift = 0;  // of the outline within its first column, 0..1

    int width() const { return right - left; }
    int height() const { return bottom - top; }
};

// One embedded face at one size. The size is the em height in pixels. Any thread.
class SizedFace {
  public:
    SizedFace(bool bold, bool italic, double size);

    bool isEmpty() const { return !(size_ > 0); }
    double size() const { return size_; }
    double toPixels(int64_t fontUnits) const {
        return static_cast<double>(scale_) * static_cast<double>(fontUnits);
    }

    int glyphOf(char32_t character) const;
    // Both in font units.
    int advance(int glyph) const;
    int capitalHeight() const;

    // Places the glyph's origin at x, y. Rows are whole; columns are rounded to quarters.
    GlyphPlace place(int glyph, double x, int y) const;
    // Coverage of each pixel, 0..255, row by row from the top.
    std::vector<uint8_t> coverage(int glyph, const GlyphPlace& place) const;

    // Calls use(glyph, units) for each glyph of the text. `units` is the sum of the advance widths
    // before it, without kerning. Skips control characters. Returns the sum of all advance widths.
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
