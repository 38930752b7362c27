// Casts of events, and conversion to and from the CButtonState of the classic mouse methods.
#include "gui/base/events.h"

#include <cassert>

namespace VSTGUI {
namespace {

constexpr struct {
    ModifierKey key;
    int32_t bit;
} kModifierBits[] = {
    {ModifierKey::Shift, kShift},
    {ModifierKey::Alt, kAlt},
    {ModifierKey::Control, kControl},
    {ModifierKey::Super, kApple},
};

constexpr struct {
    MouseButton button;
    int32_t bit;
} kButtonBits[] = {
    {MouseButton::Left, kLButton},  {MouseButton::Middle, kMButton},
    {MouseButton::Right, kRButton}, {MouseButton::Fourth, kButton4},
    {MouseButton::Fifth, kButton5},
};

template <typename Wanted>
Wanted& castTo(Event& event, [[maybe_unused]] EventType type) {
    assert(event.type == type);
    return static_cast<Wanted&>(event);
}

}  // namespace

void MouseDownUpMoveEvent::ignoreFollowUpMoveAndUpEvents(bool ignore) {
    constexpr uint32_t kBit = EventConsumeState::kIgnoreFollowUp;
    consumed.state_ = ignore ? consumed.state_ | kBit : consumed.state_ & ~kBit;
}

bool MouseDownUpMoveEvent::ignoreFollowUpMoveAndUpEvents() const {
    return (consumed.state_ & EventConsumeState::kIgnoreFollowUp) != 0;
}

const Event& noEvent() {
    static const Event event(EventType::Unknown);
    return event;
}

MouseDownEvent& castMouseDownEvent(Event& event) {
    return castTo<MouseDownEvent>(event, EventType::MouseDown);
}

MouseMoveEvent& castMouseMoveEvent(Event& event) {
    return castTo<MouseMoveEvent>(event, EventType::MouseMove);
}

MouseUpEvent& castMouseUpEvent(Event& event) {
    return castTo<MouseUpEvent>(event, EventType::MouseUp);
}

MouseWheelEvent& castMouseWheelEvent(Event& event) {
    return castTo<MouseWheelEvent>(event, EventType::MouseWheel);
}

KeyboardEvent& castKeyboardEvent(Event& event) {
    assert(event.type == EventType::KeyDown || event.type == EventType::KeyUp);
    return static_cast<KeyboardEvent&>(event);
}

CButtonState buttonStateFromMouseEvent(const MouseEvent& event) {
    CButtonState state = buttonStateFromEventModifiers(event.modifiers);
    for (const auto& row : kButtonBits)
        if (event.buttonState.has(row.button)) state |= row.bit;
    if (event.type == EventType::MouseDown &&
        static_cast<const MouseDownEvent&>(event).clickCount > 1)
        state |= kDoubleClick;
    return state;
}

CButtonState buttonStateFromEventModifiers(const Modifiers& modifiers) {
    CButtonState state;
    for (const auto& row : kModifierBits)
        if (modifiers.has(row.key)) state |= row.bit;
    return state;
}

MouseEventButtonState buttonsOf(CButtonState state) {
    MouseEventButtonState buttons;
    for (const auto& row : kButtonBits)
        if (state & row.bit) buttons.add(row.button);
    return buttons;
}

Modifiers modifiersOf(CButtonState state) {
    Modifiers modifiers;
    for (const auto& row : kModifierBits)
        if (state & row.bit) modifiers.add(row.key);
    return modifiers;
}

}  // namespace VSTGUI
