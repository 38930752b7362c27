// Events of the mouse, the wheel and the keyboard, for views and listeners.
#pragma once

#include "gui/base/button_state.h"
#include "gui/base/geometry.h"

#include <cstdint>

namespace VSTGUI {

enum class EventType : uint32_t {
    Unknown,
    MouseDown,
    MouseMove,
    MouseUp,
    MouseCancel,
    MouseEnter,
    MouseExit,
    MouseWheel,
    KeyUp,
    KeyDown,
};

enum class ModifierKey : uint32_t {
    None = 0,
    Shift = 1 << 0,
    Alt = 1 << 1,
    Control = 1 << 2,
    Super = 1 << 3,
};

enum class MouseButton : uint32_t {
    None = 0,
    Left = 1 << 0,
    Middle = 1 << 1,
    Right = 1 << 2,
    Fourth = 1 << 3,
    Fifth = 1 << 4,
};

// A set of flags from a bit enumeration.
template <typename Flag>
class FlagSet {
  public:
    FlagSet() = default;
    FlagSet(Flag flag) : bits_(static_cast<uint32_t>(flag)) {}

    bool has(Flag flag) const { return (bits_ & static_cast<uint32_t>(flag)) != 0; }
    bool is(Flag flag) const { return bits_ == static_cast<uint32_t>(flag); }  // no other flag
    bool empty() const { return bits_ == 0; }
    void add(Flag flag) { bits_ |= static_cast<uint32_t>(flag); }
    void remove(Flag flag) { bits_ &= ~static_cast<uint32_t>(flag); }
    bool operator==(const FlagSet& other) const { return bits_ == other.bits_; }
    bool operator!=(const FlagSet& other) const { return bits_ != other.bits_; }

  private:
    uint32_t bits_ = 0;
};

using Modifiers = FlagSet<ModifierKey>;

struct MouseEventButtonState : FlagSet<MouseButton> {
    using FlagSet::FlagSet;

    bool isLeft() const { return is(MouseButton::Left); }
    bool isRight() const { return is(MouseButton::Right); }
};

enum class VirtualKey : uint32_t {
    None,
    Back,
    Tab,
    Return,
    Escape,
    Space,
    End,
    Home,
    Left,
    Up,
    Right,
    Down,
    PageUp,
    PageDown,
    Enter,
    Insert,
    Delete,
    F2,
};

// Set this to true when you handle the event. Nobody else gets it then.
class EventConsumeState {
  public:
    operator bool() const { return (state_ & kHandled) != 0; }
    EventConsumeState& operator=(bool handled) {
        state_ = handled ? state_ | kHandled : state_ & ~kHandled;
        return *this;
    }

  protected:
    friend struct MouseDownUpMoveEvent;
    static constexpr uint32_t kHandled = 1 << 0;
    static constexpr uint32_t kIgnoreFollowUp = 1 << 1;
    uint32_t state_ = 0;
};

struct Event {
    EventType type = EventType::Unknown;
    EventConsumeState consumed;

  protected:
    explicit Event(EventType type) : type(type) {}
    friend const Event& noEvent();
};

struct ModifierEvent : Event {
    Modifiers modifiers;

  protected:
    using Event::Event;
};

struct MousePositionEvent : ModifierEvent {
    CPoint mousePosition;  // in the coordinates of the view's parent

  protected:
    using ModifierEvent::ModifierEvent;
};

struct MouseEvent : MousePositionEvent {
    MouseEventButtonState buttonState;

  protected:
    using MousePositionEvent::MousePositionEvent;
};

struct MouseDownUpMoveEvent : MouseEvent {
    uint32_t clickCount = 0;

    // Set this when handling a press without wanting the moves and the release after it.
    void ignoreFollowUpMoveAndUpEvents(bool ignore);
    bool ignoreFollowUpMoveAndUpEvents() const;

  protected:
    using MouseEvent::MouseEvent;
};

struct MouseDownEvent : MouseDownUpMoveEvent {
    MouseDownEvent() : MouseDownUpMoveEvent(EventType::MouseDown) {}
};

struct MouseMoveEvent : MouseDownUpMoveEvent {
    MouseMoveEvent() : MouseDownUpMoveEvent(EventType::MouseMove) {}
};

struct MouseUpEvent : MouseDownUpMoveEvent {
    MouseUpEvent() : MouseDownUpMoveEvent(EventType::MouseUp) {}
};

struct MouseCancelEvent : Event {
    MouseCancelEvent() : Event(EventType::MouseCancel) {}
};

struct MouseEnterEvent : MouseEvent {
    MouseEnterEvent() : MouseEvent(EventType::MouseEnter) {}
};

struct MouseExitEvent : MouseEvent {
    MouseExitEvent() : MouseEvent(EventType::MouseExit) {}
};

// One notch is 1. Up and right are positive.
struct MouseWheelEvent : MousePositionEvent {
    MouseWheelEvent() : MousePositionEvent(EventType::MouseWheel) {}

    CCoord deltaX = 0;
    CCoord deltaY = 0;
};

// Holds either a character or a virtual key.
struct KeyboardEvent : ModifierEvent {
    explicit KeyboardEvent(EventType type = EventType::KeyDown) : ModifierEvent(type) {}

    char32_t character = 0;
    VirtualKey virt = VirtualKey::None;
};

// Stands for the event in a hit test that no event caused.
const Event& noEvent();

// The event must have the type in the name.
MouseDownEvent& castMouseDownEvent(Event& event);
MouseMoveEvent& castMouseMoveEvent(Event& event);
MouseUpEvent& castMouseUpEvent(Event& event);
MouseWheelEvent& castMouseWheelEvent(Event& event);
KeyboardEvent& castKeyboardEvent(Event& event);

// Convert between event objects and the CButtonState of the classic mouse methods.
CButtonState buttonStateFromMouseEvent(const MouseEvent& event);
CButtonState buttonStateFromEventModifiers(const Modifiers& modifiers);
MouseEventButtonState buttonsOf(CButtonState state);
Modifiers modifiersOf(CButtonState state);

}  // namespace VSTGUI
