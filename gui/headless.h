// Frames without a window: for tests and for programs that draw a frame to a picture.
#pragma once

#include "gui/views/frame.h"

#include <cstdint>

namespace VSTGUI::headless {

// While one of these lives, CFrame::open makes no window whatever the parent.
class Scope {
  public:
    Scope();
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
};

bool isActive();

bool open(CFrame& frame);

// What a window shows, redrawn where that is due.
const PixelBuffer& picture(CFrame& frame);

// FNV-1a (64 bits) of the size and the pixels.
uint64_t hashOf(const PixelBuffer& pixels);

// The pointer; positions are pixels of the window. State: the button, with modifiers.
void press(CFrame& frame, CPoint where, CButtonState state = kLButton);
void move(CFrame& frame, CPoint where, CButtonState held = kLButton);
void release(CFrame& frame, CPoint where, CButtonState state = kLButton);
void click(CFrame& frame, CPoint where, CButtonState state = kLButton);
void leave(CFrame& frame);
void wheel(CFrame& frame, CPoint where, double up, CButtonState modifiers = 0, double right = 0);

// A key going down; the answer tells whether somebody used it.
bool key(CFrame& frame, VirtualKey key, CButtonState modifiers = 0);
bool type(CFrame& frame, const char* utf8, CButtonState modifiers = 0);

// Holds the layer's clock from construction on.
class HeldClock {
  public:
    HeldClock();
    ~HeldClock();
    HeldClock(const HeldClock&) = delete;
    HeldClock& operator=(const HeldClock&) = delete;

    // Steps through the time in short idle calls of the frame.
    void run(CFrame& frame, uint64_t milliseconds);
    // Time passes and nobody notices.
    void skip(uint64_t milliseconds);

  private:
    uint64_t now_ = 1000000;
};

}  // namespace VSTGUI::headless
