// Mouse buttons and modifier keys in one word, and the results of mouse methods.
#pragma once

#include <cstdint>

namespace VSTGUI {

enum CButton : int32_t {
    kLButton = 1 << 1,
    kMButton = 1 << 2,
    kRButton = 1 << 3,
    kShift = 1 << 4,
    kControl = 1 << 5,
    kAlt = 1 << 6,
    kApple = 1 << 7,
    kButton4 = 1 << 8,
    kButton5 = 1 << 9,
    kDoubleClick = 1 << 10,
};

class CButtonState {
  public:
    CButtonState(int32_t state = 0) : state_(state) {}

    static constexpr int32_t kButtons = kLButton | kMButton | kRButton | kButton4 | kButton5;
    static constexpr int32_t kModifiers = kShift | kControl | kAlt | kApple;

    int32_t getButtonState() const { return state_ & kButtons; }
    int32_t getModifierState() const { return state_ & kModifiers; }
    // True only if no other button is down.
    bool isLeftButton() const { return getButtonState() == kLButton; }
    bool isRightButton() const { return getButtonState() == kRButton; }
    bool isDoubleClick() const { return (state_ & kDoubleClick) != 0; }

    int32_t operator()() const { return state_; }
    int32_t operator&(int32_t mask) const { return state_ & mask; }
    CButtonState operator|(int32_t bits) const { return state_ | bits; }
    CButtonState& operator|=(int32_t bits) {
        state_ |= bits;
        return *this;
    }
    bool operator==(const CButtonState& other) const { return state_ == other.state_; }
    bool operator!=(const CButtonState& other) const { return state_ != other.state_; }

  private:
    int32_t state_;
};

enum CMouseEventResult {
    kMouseEventNotImplemented = 0,
    kMouseEventHandled,
    kMouseEventNotHandled,
    kMouseDownEventHandledButDontNeedMovedOrUpEvents,
    kMouseMoveEventHandledButDontNeedMoreEvents,
};

}  // namespace VSTGUI
