// Frames without a window, for tests and for programs that draw a frame to a picture.
#pragma once

#include "gui/views/frame.h"

#include <cstdint>

namespace VSTGUI::headless {

// While a Scope exists, CFrame::open creates no window, whatever the parent.
class Scope {
  public:
    Scope();
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
};

bool isActive();

bool open(CFrame& frame);

// Redraws dirty areas and returns what a window would show.
const PixelBuffer& picture(CFrame& frame);
// The same, without a copy. The frame has no picture afterwards.
PixelBuffer takePicture(CFrame& frame);

// FNV-1a (64 bits) of the size and the pixels.
uint64_t hashOf(const PixelBuffer& pixels);

// These move and press the pointer. Positions are in window pixels. The state holds the button and
// modifiers.
void press(CFrame& frame, CPoint where, CButtonState state = kLButton);
void move(CFrame& frame, CPoint where, CButtonState held = kLButton);
void release(CFrame& frame, CPoint where, CButtonState state = kLButton);
void click(CFrame& frame, CPoint where, CButtonState state = kLButton);
void leave(CFrame& frame);
void wheel(CFrame& frame, CPoint where, double up, CButtonState modifiers = 0, double right = 0);

// These press keys. They return true if a key was used.
bool key(CFrame& frame, VirtualKey key, CButtonState modifiers = 0);
bool type(CFrame& frame, const char* utf8, CButtonState modifiers = 0);

// Stops the layer's clock while it exists.
class HeldClock {
  public:
    HeldClock();
    ~HeldClock();
    HeldClock(const HeldClock&) = delete;
    HeldClock& operator=(const HeldClock&) = delete;

    // Advances the clock in short steps, and calls the frame's idle at each.
    void run(CFrame& frame, uint64_t milliseconds);
    // Advances the clock without calling idle.
    void skip(uint64_t milliseconds);

  private:
    uint64_t now_ = 1000000;
};

}  // namespace VSTGUI::headless
