// A level meter with lit segments. The level falls slowly.
#include "gui/controls/vu_meter.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {

CVuMeter::CVuMeter(const CRect& size, CBitmap* onBitmap, CBitmap* offBitmap, int32_t leds,
                   int32_t style)
    : CControl(size, nullptr, 0, onBitmap),
      off_(offBitmap),
      leds_(std::max(leds, 1)),
      style_(style) {
    setWantsIdle(true);
}

void CVuMeter::setNbLed(int32_t leds) {
    leds_ = std::max(leds, 1);
    setDirty();
}

void CVuMeter::setOnBitmap(CBitmap* picture) {
    setBackground(picture);
}

void CVuMeter::setOffBitmap(CBitmap* picture) {
    off_ = picture;
    setDirty();
}

bool CVuMeter::isDirty() const {
    return !drawn_ || getValue() > getOldValue() || CView::isDirty();
}

void CVuMeter::onIdle() {
    if (getOldValue() != getValue()) invalid();
}

void CVuMeter::draw(CDrawContext* context) {
    const float shown = drawn_ ? std::max(getValue(), getOldValue() - decrease_) : getValue();
    drawn_ = true;
    setOldValue(shown);
    setDirty(false);
    CBitmap* const on = getDrawBackground();
    if (!on) return;

    const float range = getRange();
    const float level = range == 0 ? 0 : (shown - getMin()) / range;
    const CRect& view = getViewSize();
    const auto drawFrom = [&](CBitmap* picture, const CRect& area) {
        if (picture) picture->draw(context, area, area.getTopLeft() - view.getTopLeft());
    };
    CRect lit = view;
    CRect dark = view;
    if (style_ & kHorizontal) {
        const double leds = std::trunc(leds_ * double{level} + 0.5);
        dark.left = lit.right = view.left + std::trunc(leds / leds_ * on->getWidth());
    } else {
        const double leds = std::trunc(leds_ * (1 - double{level}) + 0.5);
        lit.top = dark.bottom = view.top + std::trunc(leds / leds_ * on->getHeight());
    }
    drawFrom(off_, dark);
    drawFrom(on, lit);
}

}  // namespace VSTGUI
