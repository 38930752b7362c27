// Double clicks, the wheel on stepped controls, and the keys that ask for a typed value.
#include "editor/control_gestures.h"

#include <algorithm>
#include <cmath>

#include "editor/control_change.h"
#include "editor/tags.h"
#include "state/parameter_text.h"

namespace editor {

using namespace VSTGUI;

namespace {

bool turnsOrSlides(const CControl& control) {
    return dynamic_cast<const CKnob*>(&control) || dynamic_cast<const CAnimKnob*>(&control) ||
           dynamic_cast<const CSlider*>(&control);
}

// A control with positions: their number, the current one, and whether the wheel runs down the list
// when it is turned down.
struct Steps {
    int count;
    int current;
    bool listed;
};

int nearestStep(const CControl& control, int count) {
    return static_cast<int>(
        std::lround(control.getValueNormalized() * static_cast<float>(count - 1)));
}

Steps stepsOf(const CControl& control, const EditorHost& host) {
    if (const auto* const menu = dynamic_cast<const COptionMenu*>(&control)) {
        return {menu->getNbEntries(), menu->getCurrentIndex(), true};
    }
    if (dynamic_cast<const COnOffButton*>(&control)) {
        return {2, control.getValue() == control.getMax() ? 1 : 0, false};
    }
    const bool vertical = dynamic_cast<const CVerticalSwitch*>(&control) != nullptr;
    if (vertical || dynamic_cast<const CHorizontalSwitch*>(&control)) {
        const CBitmap* const strip = control.getBackground();
        const int count =
            strip ? static_cast<int>(std::lround(strip->getHeight() / control.getHeight())) : 1;
        return {count, nearestStep(control, count), vertical};
    }
    const int index = control.getTag();
    if (!turnsOrSlides(control) || !host.isParameter(index)) return {0, 0, false};
    const int count = state::parameter(index).law.positions;
    const float value = control.getValue();
    return {count, count > 0 ? static_cast<int>(state::plainValue(index, value)) : 0, false};
}

// The value of a position.
float valueAt(const CControl& control, int position, int count) {
    if (dynamic_cast<const COptionMenu*>(&control)) return static_cast<float>(position);
    if (turnsOrSlides(control)) return state::valueFromPlain(control.getTag(), position);
    const float normalized = static_cast<float>(position) / static_cast<float>(count - 1);
    return control.getMin() + normalized * control.getRange();
}

}  // namespace

void ControlGestures::add(CView* view) {
    view->registerViewEventListener(this);
    views_.emplace_back(view);
}

void ControlGestures::clear() {
    for (const auto& view : views_) view->unregisterViewEventListener(this);
    views_.clear();
    wheeled_ = nullptr;
}

void ControlGestures::viewOnEvent(CView* view, Event& event) {
    auto* const asControl = dynamic_cast<CControl*>(view);
    if (!asControl) {
        if (event.type == EventType::KeyDown) otherKey_(castKeyboardEvent(event));
        return;
    }
    auto& control = *asControl;
    switch (event.type) {
        case EventType::MouseDown:
            return onPress(control, castMouseDownEvent(event));
        case EventType::MouseWheel:
            return onWheel(control, castMouseWheelEvent(event));
        case EventType::KeyDown:
            return onKey(control, castKeyboardEvent(event));
        default:
            return;
    }
}

void ControlGestures::onPress(CControl& control, MouseDownEvent& event) {
    const bool second = event.clickCount == 2 && event.buttonState.isLeft();
    if (!second || !event.modifiers.empty() || !turnsOrSlides(control)) return;
    event.consumed = true;
    event.ignoreFollowUpMoveAndUpEvents(true);
    if (control.getValue() != control.getDefaultValue()) {
        changeTo(control, control.getDefaultValue());
    }
}

// Notches of a fine wheel are parts of one. Those of another control do not count.
int ControlGestures::wholeNotches(const CControl& control, double notches) {
    if (wheeled_ != &control) wheelRest_ = 0;
    wheeled_ = &control;
    wheelRest_ += notches;
    const double whole = std::trunc(wheelRest_);
    wheelRest_ -= whole;
    return static_cast<int>(std::clamp(whole, -16.0, 16.0));
}

void ControlGestures::onWheel(CControl& control, MouseWheelEvent& event) {
    const int tag = control.getTag();
    if (tag == kSkinSelectorTag || tag == kSizeCommand) return;  // looks do not change by chance
    const Steps steps = stepsOf(control, host_);
    if (steps.count > 1) {
        event.consumed = true;
        const int notches = wholeNotches(control, event.deltaY);
        const int wanted = steps.current + (steps.listed ? -notches : notches);
        const int position = std::clamp(wanted, 0, steps.count - 1);
        if (position != steps.current) changeTo(control, valueAt(control, position, steps.count));
        return;
    }
    // The toolkit's horizontal slider obeys the horizontal axis only.
    const bool lies = control.getWidth() > control.getHeight();
    if (!dynamic_cast<CSlider*>(&control) || !lies || event.deltaX != 0) return;
    event.consumed = true;
    const bool fine = event.modifiers.has(ModifierKey::Shift);
    const auto step = static_cast<float>(event.deltaY * (fine ? 0.1 : 1)) * control.getWheelInc();
    changeTo(control, control.getValue() + step * control.getRange());
}

void ControlGestures::onKey(CControl& control, KeyboardEvent& event) {
    const bool asks = event.virt == VirtualKey::Return || event.virt == VirtualKey::Enter ||
                      event.virt == VirtualKey::F2;
    if (!asks || !event.modifiers.empty() || !takesTyping(control)) return otherKey_(event);
    event.consumed = true;
    typeValue_(control);
}

bool ControlGestures::takesTyping(const CControl& control) const {
    return turnsOrSlides(control) && host_.isParameter(control.getTag());
}

}  // namespace editor
