// Switches with several positions, drawn from a strip of frames.
#pragma once

#include "gui/controls/drag_control.h"

namespace VSTGUI {

// The strip holds the frames one above the other, for vertical and horizontal switches alike.
class CSwitchBase : public DragControl {
  public:
    int32_t getNumSubPixmaps() const { return positions_; }

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;

  protected:
    CSwitchBase(const CRect& size, IControlListener* listener, int32_t tag, int32_t positions,
                CCoord frameHeight, CBitmap* strip);
    // The position under the pointer. It may lie outside the existing ones.
    virtual CCoord positionAt(const CPoint& where) const = 0;
    // Steps back or forward if that is the key. Returns true if it was one of the two.
    bool stepByKeys(VirtualKey key, VirtualKey back, VirtualKey forward);

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
