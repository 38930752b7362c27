// Switches of several positions, drawn from a strip of frames.
#pragma once

#include "gui/controls/drag_control.h"

namespace VSTGUI {

// The frames stand one above the other in the strip, whichever way the pointer counts.
class CSwitchBase : public DragControl {
  public:
    int32_t getNumSubPixmaps() const { return positions_; }

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;

  protected:
    CSwitchBase(const CRect& size, IControlListener* listener, int32_t tag, int32_t positions,
                CCoord frameHeight, CBitmap* strip);
    // The position under the pointer, not limited to those that exist.
    virtual CCoord positionAt(const CPoint& where) const = 0;
    void step(int32_t by);

    int32_t positions_;  // at least 1
    CCoord frameHeight_;

  private:
    void follow(const CPoint& where);
    void setPosition(CCoord position);
};

class CVerticalSwitch : public CSwitchBase {
  public:
    CVerticalSwitch(const CRect& size, IControlListener* listener, int32_t tag, int32_t positions,
                    CCoord frameHeight, int32_t unused, CBitmap* strip,
                    const CPoint& offset = CPoint());

  protected:
    CCoord positionAt(const CPoint& where) const override;
    bool stepByKey(VirtualKey key, bool fine) override;
};

class CHorizontalSwitch : public CSwitchBase {
  public:
    CHorizontalSwitch(const CRect& size, IControlListener* listener, int32_t tag, int32_t positions,
                      CCoord frameHeight, int32_t unused, CBitmap* strip,
                      const CPoint& offset = CPoint());

  protected:
    CCoord positionAt(const CPoint& where) const override;
    bool stepByKey(VirtualKey key, bool fine) override;
};

}  // namespace VSTGUI
