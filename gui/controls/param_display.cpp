// Shows a value as text on a coloured background or a picture.
#include "gui/controls/param_display.h"

#include "platform/number_text.h"

namespace VSTGUI {

CParamDisplay::CParamDisplay(const CRect& size, CBitmap* background, int32_t style)
    : CControl(size, nullptr, -1, background), font_(kNormalFont), style_(style) {}

void CParamDisplay::setFont(CFontRef font) {
    font_ = font ? font : kNormalFont;
    setDirty();
}

void CParamDisplay::setValueToStringFunction(const ValueToStringFunction& function) {
    valueToString_ = function;
    setDirty();
}

UTF8String CParamDisplay::valueText() {
    char text[256] = {};
    if (valueToString_ && valueToString_(getValue(), text, this)) {
        text[sizeof text - 1] = 0;
        return text;
    }
    return platform::fixedText(getValue(), precision_);
}

void CParamDisplay::draw(CDrawContext* context) {
    if (!(style_ & kNoDrawStyle)) {
        drawBack(context);
        drawPlatformText(context, valueText());
    }
    setDirty(false);
}

void CParamDisplay::drawBack(CDrawContext* context, CBitmap* instead) {
    const bool raisedOrSunk = (style_ & (k3DIn | k3DOut)) != 0;
    CBitmap* const picture = instead ? instead : getDrawBackground();
    if (picture) {
        picture->draw(context, getViewSize(), backOffset_);
    } else if (!getTransparency()) {
        const bool framed = !raisedOrSunk && !(style_ & kNoFrame);
        const CDrawStyle style = framed ? kDrawFilledAndStroked : kDrawFilled;
        context->setFillColor(backColor_);
        context->setFrameColor(frameColor_);
        context->setLineWidth(frameWidth_);
        if (style_ & kRoundRectStyle) {
            context->setDrawMode(kAntiAliasing);
            context->drawRoundRect(getViewSize(), radius_, style);
        } else {
            context->setDrawMode(kAliasing);
            context->drawRect(getViewSize(), style);
        }
    }
    if (raisedOrSunk) drawEdges(context);
}

void CParamDisplay::drawEdges(CDrawContext* context) {
    const CRect& view = getViewSize();
    const CColor& lit = style_ & k3DIn ? backColor_ : frameColor_;
    const CColor& shaded = style_ & k3DIn ? frameColor_ : backColor_;
    const CCoord width = frameWidth_;
    context->setFillColor(shaded);
    context->drawRect(CRect(view.right - width, view.top, view.right, view.bottom), kDrawFilled);
    context->drawRect(CRect(view.left, view.bottom - width, view.right, view.bottom), kDrawFilled);
    context->setFillColor(lit);
    context->drawRect(CRect(view.left, view.top, view.right, view.top + width), kDrawFilled);
    context->drawRect(CRect(view.left, view.top, view.left + width, view.bottom), kDrawFilled);
}

CRect CParamDisplay::textArea() const {
    CRect area = getViewSize();
    return area.inset(textInset_);
}

void CParamDisplay::drawPlatformText(CDrawContext* context, const UTF8String& text) {
    drawPlatformText(context, text, getViewSize());
}

void CParamDisplay::drawPlatformText(CDrawContext* context, const UTF8String& text,
                                     const CRect& rect) {
    if ((style_ & kNoTextStyle) || text.empty()) return;
    CRect area = rect;
    area.inset(textInset_);
    CRect before;
    context->getClipRect(before);
    CRect clip = area;
    context->setClipRect(clip.bound(before));
    context->setFont(font_);
    context->setDrawMode(kAntiAliasing);
    if (style_ & kShadowText) {
        CRect shadow = area;
        context->setFontColor(shadowColor_);
        context->drawString(text, shadow.offset(shadowOffset_), align_, antialias_);
    }
    context->setFontColor(fontColor_);
    context->drawString(text, area, align_, antialias_);
    context->setClipRect(before);
}

}  // namespace VSTGUI
