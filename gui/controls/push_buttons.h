// Two-state buttons: one stays pressed, the other springs back.
#pragma once

#include "gui/controls/control.h"

namespace VSTGUI {

// The picture holds both states, one above the other. The lower half shows the maximum value.
class COnOffButton : public CControl {
  public:
    explicit COnOffButton(const CRect& size, IControlListener* listener = nullptr, int32_t tag = -1,
                          CBitmap* picture = nullptr, int32_t style = 0);

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseCancel() override;
    void onKeyboardEvent(KeyboardEvent& event) override;

  private:
    void toggle();
};

// Has the maximum value while held. A release inside reports the maximum, then the minimum.
class CKickButton : public CControl {
  public:
    CKickButton(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* picture);

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseCancel() override;

  private:
    void show(bool down);
    void finish(bool fired);
};

}  // namespace VSTGUI
