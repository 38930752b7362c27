// A view with a value. It reports gestures to a listener.
#include "gui/controls/control.h"
#include "gui/views/frame.h"

#include <algorithm>
#include <utility>

namespace VSTGUI {
namespace {

// NaN becomes the lower limit.
float limited(float value, float low, float high) {
    if (!(value >= low)) return low;
    return std::min(value, std::max(low, high));
}

}  // namespace

CControl::CControl(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background)
    : CView(size), listener_(listener), tag_(tag) {
    CView::setBackground(background);
}

void CControl::setValue(float value) {
    const float before = std::exchange(value_, limited(value, getMin(), getMax()));
    if (value_ != before) mayBeDirty();
}

void CControl::setValueNormalized(float normalized) {
    setValue(getMin() + limited(normalized, 0, 1) * getRange());
}

float CControl::getValueNormalized() const {
    const float range = getRange();
    return range == 0 ? 0 : limited((getValue() - getMin()) / range, 0, 1);
}

void CControl::setMin(float min) {
    min_ = min;
    bounceValue();
}

void CControl::setMax(float max) {
    max_ = max;
    bounceValue();
}

void CControl::bounceValue() {
    value_ = limited(value_, getMin(), getMax());
    mayBeDirty();
}

void CControl::setTag(int32_t tag) {
    if (listener_) listener_->controlTagWillChange(this);
    tag_ = tag;
    if (listener_) listener_->controlTagDidChange(this);
}

void CControl::beginEdit() {
    if (editing_++ > 0) return;
    if (listener_) listener_->controlBeginEdit(this);
    if (getFrame()) getFrame()->beginEdit(tag_);
}

void CControl::endEdit() {
    if (editing_ == 0 || --editing_ > 0) return;
    if (getFrame()) getFrame()->endEdit(tag_);
    if (listener_) listener_->controlEndEdit(this);
}

void CControl::valueChanged() {
    if (listener_) listener_->valueChanged(this);
}

bool CControl::isDirty() const {
    return value_ != old_ || CView::isDirty();
}

void CControl::setDirty(bool dirty) {
    CView::setDirty(dirty);
    if (!dirty)
        old_ = value_;
    else
        old_ = value_ == -1 ? 0.f : -1.f;
}

void CControl::reportChange() {
    if (!isDirty()) return;
    valueChanged();
    invalid();
}

void CControl::editTo(float value) {
    beginEdit();
    setValue(value);
    reportChange();
    endEdit();
}

bool CControl::swallowsModifiedPress(const CButtonState& buttons) {
    return listener_ && listener_->controlModifierClicked(this, buttons) != 0;
}

void CControl::onMouseDownEvent(MouseDownEvent& event) {
    if (!event.buttonState.isLeft() || !event.modifiers.is(ModifierKey::Control))
        return CView::onMouseDownEvent(event);
    event.consumed = true;
    event.ignoreFollowUpMoveAndUpEvents(true);
    if (getValue() == getDefaultValue()) return;
    beginEdit();
    setValue(getDefaultValue());
    valueChanged();
    endEdit();
    invalid();
}

bool CControl::removed(CView* parent) {
    while (isEditing()) endEdit();  // the host must not be left with an open gesture
    return CView::removed(parent);
}

}  // namespace VSTGUI
