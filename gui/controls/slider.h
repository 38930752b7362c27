// A slider: a handle picture that travels along a track.
#pragma once

#include "gui/controls/drag_control.h"

namespace VSTGUI {

enum class CSliderMode {
    Touch,          // only a press on the handle starts a drag
    RelativeTouch,  // a drag from anywhere moves the handle by the same distance
    FreeClick,      // the handle jumps to the pointer
    Ramp,           // the handle glides to the pointer
    UseGlobal,
};

class CSlider : public DragControl {
  public:
    // Set exactly one of horizontal and vertical. The side bits name the end of value 0; the
    // default is left or top.
    enum Style : int32_t {
        kHorizontal = 1 << 0,
        kVertical = 1 << 1,
        kLeft = 1 << 2,
        kRight = 1 << 3,
        kTop = 1 << 4,
        kBottom = 1 << 5,
    };

    // `minPos` and `maxPos` are the first and last position of the handle's left or top edge, in
    // the parent's coordinates. `offset` is the point of the background that lands on the view's
    // corner.
    CSlider(const CRect& size, IControlListener* listener, int32_t tag, int32_t minPos,
            int32_t maxPos, CBitmap* handle, CBitmap* background, const CPoint& offset = CPoint(),
            int32_t style = kLeft | kHorizontal);

    virtual void setSliderMode(CSliderMode mode) { mode_ = mode; }
    CSliderMode getSliderMode() const { return mode_; }
    CSliderMode getEffectiveSliderMode() const;
    static void setGlobalMode(CSliderMode mode) { globalMode = mode; }
    static CSliderMode getGlobalMode() { return globalMode; }
    // With Shift, moves are divided by this factor.
    virtual void setZoomFactor(float factor);
    virtual float getZoomFactor() const { return zoomFactor_; }
    virtual void setBackgroundOffset(const CPoint& offset);
    virtual void setHandle(CBitmap* handle);
    CBitmap* getHandle() const { return handle_; }

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseCancel() override;
    void onMouseWheelEvent(MouseWheelEvent& event) override;
    bool removed(CView* parent) override;

  private:
    bool isHorizontal() const { return (style_ & kHorizontal) != 0; }
    bool isInverse() const { return (style_ & (isHorizontal() ? kRight : kBottom)) != 0; }
    CCoord along(const CPoint& point) const { return isHorizontal() ? point.x : point.y; }
    CRect handleRect() const;
    float targetAt(const CPoint& where) const;
    void follow(const CPoint& where, bool fine);
    void rampTo(float target);
    void stopRamp() { ramp_ = nullptr; }

    static CSliderMode globalMode;

    SharedPointer<CBitmap> handle_;
    CPoint offset_;
    int32_t style_;
    CCoord firstPosition_;  // from the view's start
    CCoord travel_;
    CSliderMode mode_ = CSliderMode::UseGlobal;
    float zoomFactor_ = 10;

    // The start of a drag. Both move when Shift is pressed or released.
    CPoint anchor_;
    float anchorNormalized_ = 0;
    bool anchorFine_ = false;
    float rampTarget_ = 0;
    SharedPointer<CVSTGUITimer> ramp_;
};

}  // namespace VSTGUI
