// What knobs, sliders and switches share: drags that Escape takes back, wheel and key steps.
#pragma once

#include "gui/base/timer.h"
#include "gui/controls/control.h"

namespace VSTGUI {

class DragControl : public CControl {
  public:
    using CControl::CControl;

    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseCancel() override;
    void onKeyboardEvent(KeyboardEvent& event) override;
    bool removed(CView* parent) override;

  protected:
    bool isDragging() const { return dragging_; }
    void beginDrag();
    void endDrag();
    // A key without other use while no drag is on; true if it was used.
    virtual bool stepByKey(VirtualKey key, bool fine);

    // One wheelInc a notch, a tenth of it when fine. A turn is one edit until the wheel rests.
    void turnWheel(double notches, bool fine);
    void stepBy(double steps, bool fine);

  private:
    void endWheelEdit();

    bool dragging_ = false;
    float valueAtPress_ = 0;
    SharedPointer<CVSTGUITimer> wheelRest_;  // not null while a turn's edit is open
};

}  // namespace VSTGUI
