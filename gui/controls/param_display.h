// Shows a value as text on a coloured background or a picture.
#pragma once

#include "gui/controls/control.h"

#include <functional>

namespace VSTGUI {

class CParamDisplay : public CControl {
  public:
    enum Style : int32_t {
        kShadowText = 1 << 0,
        k3DIn = 1 << 1,
        k3DOut = 1 << 2,
        kNoTextStyle = 1 << 3,
        kNoDrawStyle = 1 << 4,
        kRoundRectStyle = 1 << 5,
        kNoFrame = 1 << 6,
    };
    // Writes a zero-terminated text for the value. Return false to show the plain number instead.
    using ValueToStringFunction =
        std::function<bool(float value, char utf8String[256], CParamDisplay* display)>;

    explicit CParamDisplay(const CRect& size, CBitmap* background = nullptr, int32_t style = 0);

    virtual void setFont(CFontRef font);
    CFontRef getFont() const { return font_; }
    virtual void setFontColor(const CColor& color) { change(fontColor_, color); }
    CColor getFontColor() const { return fontColor_; }
    virtual void setBackColor(const CColor& color) { change(backColor_, color); }
    CColor getBackColor() const { return backColor_; }
    virtual void setFrameColor(const CColor& color) { change(frameColor_, color); }
    CColor getFrameColor() const { return frameColor_; }
    virtual void setShadowColor(const CColor& color) { change(shadowColor_, color); }
    CColor getShadowColor() const { return shadowColor_; }
    virtual void setHoriAlign(CHoriTxtAlign align) { change(align_, align); }
    CHoriTxtAlign getHoriAlign() const { return align_; }
    virtual void setTextInset(const CPoint& inset) { change(textInset_, inset); }
    CPoint getTextInset() const { return textInset_; }
    virtual void setShadowTextOffset(const CPoint& offset) { change(shadowOffset_, offset); }
    virtual void setStyle(int32_t style) { change(style_, style); }
    int32_t getStyle() const { return style_; }
    virtual void setFrameWidth(CCoord width) { change(frameWidth_, width); }
    virtual void setRoundRectRadius(CCoord radius) { change(radius_, radius); }
    virtual void setAntialias(bool antialias) { change(antialias_, antialias); }
    virtual void setPrecision(uint8_t decimals) { change(precision_, decimals); }
    // The point of the background picture that lands on the view's top-left corner. After
    // copyBackOffset(), a view with the frame's picture looks transparent.
    virtual void setBackOffset(const CPoint& offset) { change(backOffset_, offset); }
    CPoint getBackOffset() const { return backOffset_; }
    virtual void copyBackOffset() { setBackOffset(getViewSize().getTopLeft()); }

    void setValueToStringFunction(const ValueToStringFunction& function);

    void draw(CDrawContext* context) override;
    virtual void drawBack(CDrawContext* context, CBitmap* instead = nullptr);
    virtual void drawPlatformText(CDrawContext* context, const UTF8String& text);
    virtual void drawPlatformText(CDrawContext* context, const UTF8String& text, const CRect& rect);

  protected:
    CRect textArea() const;

  private:
    template <typename Setting>
    void change(Setting& setting, const Setting& value) {
        setting = value;
        setDirty();
    }
    UTF8String valueText();
    void drawEdges(CDrawContext* context);

    SharedPointer<CFontDesc> font_;
    CColor fontColor_ = kWhiteCColor;
    CColor backColor_ = kBlackCColor;
    CColor frameColor_ = kBlackCColor;
    CColor shadowColor_ = kRedCColor;
    CHoriTxtAlign align_ = kCenterText;
    CPoint textInset_;
    CPoint shadowOffset_{1, 1};
    CPoint backOffset_;
    CCoord frameWidth_ = 1;
    CCoord radius_ = 6;
    int32_t style_;
    uint8_t precision_ = 2;
    bool antialias_ = true;
    ValueToStringFunction valueToString_;
};

}  // namespace VSTGUI
