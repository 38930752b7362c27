// A display that shows the text given to setText().
#include "gui/controls/text_label.h"

namespace VSTGUI {

CTextLabel::CTextLabel(const CRect& size, UTF8StringPtr text, CBitmap* background, int32_t style)
    : CParamDisplay(size, background, style), text_(text) {}

void CTextLabel::setText(const UTF8String& text) {
    if (text_ == text) return;
    text_ = text;
    setDirty();
}

void CTextLabel::draw(CDrawContext* context) {
    if (!(getStyle() & kNoDrawStyle)) {
        drawBack(context);
        drawPlatformText(context, text_);
    }
    setDirty(false);
}

}  // namespace VSTGUI
