// Font descriptions: a name, a size and a style, shared by views.
#pragma once

#include "gui/base/geometry.h"
#include "gui/base/reference.h"
#include "gui/base/utf8_string.h"

#include <cstdint>

namespace VSTGUI {

enum CTxtFace : int32_t {
    kNormalFace = 0,
    kBoldFace = 1 << 1,
    kItalicFace = 1 << 2,
    kUnderlineFace = 1 << 3,
    kStrikethroughFace = 1 << 4,
};

// All names select the embedded sans-serif faces. The size is the em height in pixels.
class CFontDesc : public AtomicReferenceCounted {
  public:
    explicit CFontDesc(const UTF8String& name = "", CCoord size = 0, int32_t style = 0)
        : name_(name), size_(size), style_(style) {}

    const UTF8String& getName() const { return name_; }
    CCoord getSize() const { return size_; }
    int32_t getStyle() const { return style_; }
    virtual void setName(const UTF8String& name) { name_ = name; }
    virtual void setSize(CCoord size) { size_ = size; }
    virtual void setStyle(int32_t style) { style_ = style; }

    bool operator==(const CFontDesc& other) const;
    bool operator!=(const CFontDesc& other) const { return !(*this == other); }

  private:
    UTF8String name_;
    CCoord size_;
    int32_t style_;
};

using CFontRef = CFontDesc*;

// Null before init() and after the last exit().
extern CFontRef kSystemFont;
extern CFontRef kNormalFontVeryBig;
extern CFontRef kNormalFontBig;
extern CFontRef kNormalFont;
extern CFontRef kNormalFontSmall;
extern CFontRef kNormalFontSmaller;
extern CFontRef kNormalFontVerySmall;
extern CFontRef kSymbolFont;

void makeStandardFonts();
void releaseStandardFonts();

}  // namespace VSTGUI
