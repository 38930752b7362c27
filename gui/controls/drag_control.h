// Shared by knobs, sliders and switches: drags, which Escape undoes, and steps by wheel and keys.
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
    // Handles a key while there is no drag. Returns true if the key was used.
    virtual bool stepByKey(VirtualKey key, bool fine);

    // Steps by one wheelInc per notch, or a tenth of it if `fine`. Turns form one edit until the
    // wheel rests.
    void turnWheel(double notches, bool fine);
    void stepBy(double steps, bool fine);

  private:
    void endWheelEdit();

    bool dragging_ = false;
    float valueAtPress_ = 0;
    SharedPointer<CVSTGUITimer> wheelRest_;  // set while the edit of a turn is open
};

}  // namespace VSTGUI
