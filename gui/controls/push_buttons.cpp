// Two-state buttons: one stays pressed, the other springs back.
#include "gui/controls/push_buttons.h"

namespace VSTGUI {

COnOffButton::COnOffButton(const CRect& size, IControlListener* listener, int32_t tag,
                           CBitmap* picture, int32_t)
    : CControl(size, listener, tag, picture) {
    setWantsFocus(true);
}

void COnOffButton::draw(CDrawContext* context) {
    if (CBitmap* const picture = getDrawBackground()) {
        const CCoord y = getValue() == getMax() ? picture->getHeight() / 2 : 0;
        picture->draw(context, getViewSize(), CPoint(0, y));
    }
    setDirty(false);
}

void COnOffButton::toggle() {
    setValue(getValue() == getMax() ? getMin() : getMax());
    reportChange();
}

CMouseEventResult COnOffButton::onMouseDown(CPoint&, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    beginEdit();
    return kMouseEventHandled;
}

CMouseEventResult COnOffButton::onMouseUp(CPoint& where, const CButtonState&) {
    if (!isEditing()) return kMouseEventNotHandled;
    if (getViewSize().pointInside(where)) toggle();
    endEdit();
    return kMouseEventHandled;
}

CMouseEventResult COnOffButton::onMouseCancel() {
    endEdit();
    return kMouseEventHandled;
}

void COnOffButton::onKeyboardEvent(KeyboardEvent& event) {
    const bool isReturn = event.virt == VirtualKey::Return || event.virt == VirtualKey::Enter;
    if (event.type != EventType::KeyDown || !isReturn || !event.modifiers.empty()) return;
    beginEdit();
    toggle();
    endEdit();
    event.consumed = true;
}

CKickButton::CKickButton(const CRect& size, IControlListener* listener, int32_t tag,
                         CBitmap* picture)
    : CControl(size, listener, tag, picture) {}

void CKickButton::draw(CDrawContext* context) {
    if (CBitmap* const picture = getDrawBackground())
        picture->draw(context, getViewSize(), CPoint(0, getValue() == getMax() ? getHeight() : 0));
    setDirty(false);
}

void CKickButton::show(bool down) {
    setValue(down ? getMax() : getMin());
    if (isDirty()) invalid();
}

CMouseEventResult CKickButton::onMouseDown(CPoint&, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    beginEdit();
    show(true);
    return kMouseEventHandled;
}

CMouseEventResult CKickButton::onMouseMoved(CPoint& where, const CButtonState&) {
    if (!isEditing()) return kMouseEventNotHandled;
    show(getViewSize().pointInside(where));
    return kMouseEventHandled;
}

void CKickButton::finish(bool fired) {
    if (!isEditing()) return;
    if (fired) {
        setValue(getMax());
        valueChanged();
    }
    setValue(getMin());
    valueChanged();
    invalid();
    endEdit();
}

CMouseEventResult CKickButton::onMouseUp(CPoint& where, const CButtonState&) {
    finish(getViewSize().pointInside(where));
    return kMouseEventHandled;
}

CMouseEventResult CKickButton::onMouseCancel() {
    finish(false);
    return kMouseEventHandled;
}

}  // namespace VSTGUI
