// Knobs: CKnob draws a handle on a circle, CAnimKnob the frame of a strip that matches the value.
#pragma once

#include "gui/controls/drag_control.h"

namespace VSTGUI {

// Angles are in radians, clockwise on the screen from the positive x axis.
class CKnobBase : public DragControl {
  public:
    virtual void setStartAngle(float angle);
    virtual float getStartAngle() const { return static_cast<float>(startAngle_); }
    virtual void setRangeAngle(float angle);
    virtual float getRangeAngle() const { return static_cast<float>(rangeAngle_); }
    // For linear mode: pixels for the whole range, and their factor while Shift is held.
    virtual void setKnobRange(float pixels);
    virtual float getKnobRange() const { return knobRange_; }
    virtual void setZoomFactor(float factor);
    virtual float getZoomFactor() const { return zoomFactor_; }
    // Distance from the view's edge to the circle on which the handle's centre moves.
    virtual void setInsetValue(CCoord inset);
    virtual CCoord getInsetValue() const { return inset_; }

    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    void onMouseWheelEvent(MouseWheelEvent& event) override;

  protected:
    CKnobBase(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background,
              CCoord inset);
    // The point on the circle for the current value, relative to the view's top-left corner.
    CPoint handlePoint() const;

  private:
    void dragLinear(const CPoint& where, bool fine);
    void dragCircular(const CPoint& where);
    float normalizedAt(const CPoint& where) const;

    double startAngle_;
    double rangeAngle_;
    float knobRange_ = 200;
    float zoomFactor_ = 1.5f;
    CCoord inset_;

    // The start of a linear drag. It moves when Shift is pressed or released.
    CPoint anchor_;
    float anchorValue_ = 0;
    bool anchorFine_ = false;
    bool linear_ = false;
};

class CKnob : public CKnobBase {
  public:
    // `offset` is the position in the background picture that lands on the view's corner.
    CKnob(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background,
          CBitmap* handle, const CPoint& offset = CPoint(), int32_t drawStyle = 0);

    // Without a handle picture, the knob draws a line in the two handle colours.
    virtual void setHandleBitmap(CBitmap* handle);
    CBitmap* getHandleBitmap() const { return handle_; }
    virtual void setColorHandle(const CColor& color);
    virtual void setColorShadowHandle(const CColor& color);
    virtual void setHandleLineWidth(CCoord width);

    void draw(CDrawContext* context) override;

  private:
    SharedPointer<CBitmap> handle_;
    CPoint offset_;
    CColor handleColor_ = kWhiteCColor;
    CColor shadowColor_ = kGreyCColor;
    CCoord lineWidth_ = 1;
};

class CAnimKnob : public CKnobBase {
  public:
    // The strip holds the frames one above the other. Its height determines their number.
    CAnimKnob(const CRect& size, IControlListener* listener, int32_t tag, int32_t frames,
              CCoord frameHeight, CBitmap* strip, const CPoint& offset = CPoint());

    void setBackground(CBitmap* strip) override;
    virtual void setInverseBitmap(bool inverse);
    int32_t getNumSubPixmaps() const { return frames_; }

    void draw(CDrawContext* context) override;

  private:
    int32_t frames_;
    CCoord frameHeight_;
    bool inverse_ = false;
};

}  // namespace VSTGUI
