// Switches with several positions, drawn from a strip of frames.
#include "gui/controls/switches.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {

CSwitchBase::CSwitchBase(const CRect& size, IControlListener* listener, int32_t tag,
                         int32_t positions, CCoord frameHeight, CBitmap* strip)
    : DragControl(size, listener, tag, strip),
      positions_(std::max(positions, 1)),
      frameHeight_(frameHeight) {
    setDefaultValue(0);
    setWantsFocus(true);
}

void CSwitchBase::draw(CDrawContext* context) {
    if (CBitmap* const strip = getDrawBackground()) {
        const float normalized = positions_ > 1 ? getValueNormalized() : 0;
        const auto frame = static_cast<int32_t>(static_cast<float>(positions_) * normalized);
        strip->draw(context, getViewSize(),
                    CPoint(0, frameHeight_ * std::min(positions_ - 1, frame)));
    }
    setDirty(false);
}

void CSwitchBase::setPosition(CCoord position) {
    const CCoord last = positions_ - 1;
    setValueNormalized(last > 0 ? static_cast<float>(position / last) : 0);
    reportChange();
}

void CSwitchBase::follow(const CPoint& where) {
    const CCoord position = positionAt(where);
    setPosition(std::isfinite(position) ? std::trunc(position) : 0);
}

bool CSwitchBase::stepByKeys(VirtualKey key, VirtualKey back, VirtualKey forward) {
    if (key != back && key != forward) return false;
    const CCoord last = positions_ - 1;
    beginEdit();
    setPosition(std::round(getValueNormalized() * last) + (key == forward ? 1 : -1));
    endEdit();
    return true;
}

CMouseEventResult CSwitchBase::onMouseDown(CPoint& where, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    beginDrag();
    follow(where);
    return kMouseEventHandled;
}

CMouseEventResult CSwitchBase::onMouseMoved(CPoint& where, const CButtonState&) {
    if (!isDragging()) return kMouseEventNotHandled;
    follow(where);
    return kMouseEventHandled;
}

CVerticalSwitch::CVerticalSwitch(const CRect& size, IControlListener* listener, int32_t tag,
                                 int32_t positions, CCoord frameHeight, int32_t, CBitmap* strip,
                                 const CPoint&)
    : CSwitchBase(size, listener, tag, positions, frameHeight, strip) {}

CCoord CVerticalSwitch::positionAt(const CPoint& where) const {
    return (where.y - getViewSize().top) * positions_ / frameHeight_;
}

bool CVerticalSwitch::stepByKey(VirtualKey key, bool) {
    return stepByKeys(key, VirtualKey::Up, VirtualKey::Down);
}

CHorizontalSwitch::CHorizontalSwitch(const CRect& size, IControlListener* listener, int32_t tag,
                                     int32_t positions, CCoord frameHeight, int32_t, CBitmap* strip,
                                     const CPoint&)
    : CSwitchBase(size, listener, tag, positions, frameHeight, strip) {}

CCoord CHorizontalSwitch::positionAt(const CPoint& where) const {
    const CBitmap* const strip = getDrawBackground();
    return (where.x - getViewSize().left) * positions_ / (strip ? strip->getWidth() : getWidth());
}

bool CHorizontalSwitch::stepByKey(VirtualKey key, bool) {
    return stepByKeys(key, VirtualKey::Left, VirtualKey::Right);
}

}  // namespace VSTGUI
