// Shared by knobs, sliders and switches: drags, which Escape undoes, and steps by wheel and keys.
#include "gui/controls/drag_control.h"

namespace VSTGUI {
namespace {

constexpr uint32_t kWheelRestTime = 500;  // milliseconds
constexpr double kFineFactor = 0.1;

}  // namespace

void DragControl::beginDrag() {
    endWheelEdit();
    valueAtPress_ = getValue();
    dragging_ = true;
    beginEdit();
}

void DragControl::endDrag() {
    if (!dragging_) return;
    dragging_ = false;
    endEdit();
}

CMouseEventResult DragControl::onMouseUp(CPoint&, const CButtonState&) {
    endDrag();
    return kMouseEventHandled;
}

CMouseEventResult DragControl::onMouseCancel() {
    endDrag();
    return kMouseEventHandled;
}

bool DragControl::removed(CView* parent) {
    dragging_ = false;
    endWheelEdit();
    return CControl::removed(parent);
}

void DragControl::onKeyboardEvent(KeyboardEvent& event) {
    if (event.type != EventType::KeyDown) return;
    if (dragging_) {
        if (event.virt != VirtualKey::Escape) return;
        event.consumed = true;
        setValue(valueAtPress_);
        reportChange();
        endDrag();
        return;
    }
    const Modifiers others = event.modifiers;
    const bool fine = others.is(ModifierKey::Shift);
    if (!others.empty() && !fine) return;
    if (stepByKey(event.virt, fine)) event.consumed = true;
}

bool DragControl::stepByKey(VirtualKey key, bool fine) {
    double direction = 0;
    if (key == VirtualKey::Up || key == VirtualKey::Right) direction = 1;
    if (key == VirtualKey::Down || key == VirtualKey::Left) direction = -1;
    if (direction == 0) return false;
    beginEdit();
    stepBy(direction, fine);
    endEdit();
    return true;
}

void DragControl::stepBy(double steps, bool fine) {
    const double step = steps * getWheelInc() * (fine ? kFineFactor : 1);
    setValueNormalized(static_cast<float>(getValueNormalized() + step));
    reportChange();
}

void DragControl::turnWheel(double notches, bool fine) {
    if (dragging_) return;
    if (!wheelRest_) {
        beginEdit();
        wheelRest_ = makeOwned<CVSTGUITimer>([this](CVSTGUITimer*) { endWheelEdit(); },
                                             kWheelRestTime, false);
    }
    wheelRest_->stop();
    wheelRest_->start();
    stepBy(notches, fine);
}

void DragControl::endWheelEdit() {
    if (!wheelRest_) return;
    wheelRest_ = nullptr;
    endEdit();
}

}  // namespace VSTGUI
