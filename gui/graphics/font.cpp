// Font descriptions, and the standard ones that all views share.
#include "gui/graphics/font.h"

namespace VSTGUI {

CFontRef kSystemFont = nullptr;
CFontRef kNormalFontVeryBig = nullptr;
CFontRef kNormalFontBig = nullptr;
CFontRef kNormalFont = nullptr;
CFontRef kNormalFontSmall = nullptr;
CFontRef kNormalFontSmaller = nullptr;
CFontRef kNormalFontVerySmall = nullptr;
CFontRef kSymbolFont = nullptr;

namespace {

constexpr struct {
    CFontRef* font;
    UTF8StringPtr name;
    CCoord size;
} kStandardFonts[] = {
    {&kSystemFont, "Arial", 12},         {&kNormalFontVeryBig, "Arial", 18},
    {&kNormalFontBig, "Arial", 14},      {&kNormalFont, "Arial", 12},
    {&kNormalFontSmall, "Arial", 11},    {&kNormalFontSmaller, "Arial", 10},
    {&kNormalFontVerySmall, "Arial", 9}, {&kSymbolFont, "Symbol", 13},
};

}  // namespace

bool CFontDesc::operator==(const CFontDesc& other) const {
    return name_ == other.name_ && size_ == other.size_ && style_ == other.style_;
}

void makeStandardFonts() {
    for (const auto& row : kStandardFonts) *row.font = new CFontDesc(row.name, row.size);
}

void releaseStandardFonts() {
    for (const auto& row : kStandardFonts) {
        (*row.font)->forget();
        *row.font = nullptr;
    }
}

}  // namespace VSTGUI
