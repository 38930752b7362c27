// A level meter with lit segments. The level falls slowly.
#pragma once

#include "gui/controls/control.h"

namespace VSTGUI {

class CVuMeter : public CControl {
  public:
    enum Style : int32_t { kHorizontal = 1 << 0, kVertical = 1 << 1 };

    CVuMeter(const CRect& size, CBitmap* onBitmap, CBitmap* offBitmap, int32_t leds,
             int32_t style = kVertical);

    // The most that the shown level falls between two drawings.
    virtual void setDecreaseStepValue(float step) { decrease_ = step; }
    float getDecreaseStepValue() const { return decrease_; }
    virtual void setNbLed(int32_t leds);
    int32_t getNbLed() const { return leds_; }
    virtual void setOnBitmap(CBitmap* picture);
    CBitmap* getOnBitmap() const { return getBackground(); }
    virtual void setOffBitmap(CBitmap* picture);
    CBitmap* getOffBitmap() const { return off_; }

    // The old value is the level shown. A rise is dirty at once; a fall waits for onIdle().
    bool isDirty() const override;
    void setDirty(bool dirty = true) override { CView::setDirty(dirty); }

    void draw(CDrawContext* context) override;
    void onIdle() override;

  private:
    SharedPointer<CBitmap> off_;
    int32_t leds_;
    int32_t style_;
    float decrease_ = 0.1f;
    bool drawn_ = false;
};

}  // namespace VSTGUI
