// Glyphs through stb_truetype.
#include "platform/glyphs.h"

#include <algorithm>
#include <cmath>

#include "platform/embedded_fonts.h"

#define STBTT_STATIC
#define STB_TRUETYPE_IMPLEMENTATION
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb_truetype.h>
#pragma GCC diagnostic pop

namespace platform {
namespace {

const stbtt_fontinfo& faceFor(bool bold, bool italic) {
    struct Faces {
        Faces() {
            for (int i = 0; i < 4; ++i)
                stbtt_InitFont(&faces[i], embeddedFont((i & 1) != 0, (i & 2) != 0), 0);
        }
        stbtt_fontinfo faces[4];
    };
    static const Faces all;
    return all.faces[(bold ? 1 : 0) + (italic ? 2 : 0)];
}

}  // namespace

SizedFace::SizedFace(bool bold, bool italic, double size)
    : face_(faceFor(bold, italic)),
      size_(std::max(size, 0.0)),
      scale_(stbtt_ScaleForMappingEmToPixels(&face_, static_cast<float>(size_))) {}

int SizedFace::glyphOf(char32_t character) const {
    return stbtt_FindGlyphIndex(&face_, static_cast<int>(character));
}

int SizedFace::advance(int glyph) const {
    int width = 0;
    int bearing = 0;
    stbtt_GetGlyphHMetrics(&face_, glyph, &width, &bearing);
    return width;
}

int SizedFace::capitalHeight() const {
    int left = 0, bottom = 0, right = 0, top = 0;
    stbtt_GetCodepointBox(&face_, 'H', &left, &bottom, &right, &top);
    return top;
}

GlyphPlace SizedFace::place(int glyph, double x, int y) const {
    const double snapped = std::floor(x * 4 + 0.5) / 4;
    const int column = static_cast<int>(std::floor(snapped));
    GlyphPlace place;
    place.shift = static_cast<float>(snapped - column);
    stbtt_GetGlyphBitmapBoxSubpixel(&face_, glyph, scale_, scale_, place.shift, 0, &place.left,
                                    &place.top, &place.right, &place.bottom);
    place.left += column;
    place.right += column;
    place.top += y;
    place.bottom += y;
    return place;
}

std::vector<uint8_t> SizedFace::coverage(int glyph, const GlyphPlace& place) const {
    std::vector<uint8_t> rows(static_cast<size_t>(place.width()) * place.height());
    stbtt_MakeGlyphBitmapSubpixel(&face_, rows.data(), place.width(), place.height(), place.width(),
                                  scale_, scale_, place.shift, 0, glyph);
    return rows;
}

}  // namespace platform
