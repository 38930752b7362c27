// Frames without a window, for tests and for programs that draw a frame to a picture.
#include "gui/headless.h"
#include "gui/base/clock.h"

namespace VSTGUI::headless {
namespace {

int scopes = 0;

}  // namespace

Scope::Scope() {
    ++scopes;
}

Scope::~Scope() {
    --scopes;
}

bool isActive() {
    return scopes > 0;
}

bool open(CFrame& frame) {
    Scope scope;
    return frame.open(&scope);
}

const PixelBuffer& picture(CFrame& frame) {
    frame.redraw();
    return frame.surface().picture();
}

PixelBuffer takePicture(CFrame& frame) {
    frame.redraw();
    return frame.takePicture();
}

uint64_t hashOf(const PixelBuffer& pixels) {
    uint64_t hash = 0xCBF29CE484222325;
    const auto add = [&hash](uint32_t word) {
        for (int shift = 0; shift < 32; shift += 8)
            hash = (hash ^ (word >> shift & 255)) * 0x100000001B3;
    };
    add(static_cast<uint32_t>(pixels.width()));
    add(static_cast<uint32_t>(pixels.height()));
    for (int y = 0; y < pixels.height(); ++y)
        for (int x = 0; x < pixels.width(); ++x) add(pixels.at(x, y));
    return hash;
}

void press(CFrame& frame, CPoint where, CButtonState state) {
    frame.input().pointerPressed(where, state);
}

void move(CFrame& frame, CPoint where, CButtonState held) {
    frame.input().pointerMoved(where, held);
}

void release(CFrame& frame, CPoint where, CButtonState state) {
    frame.input().pointerReleased(where, state);
}

void click(CFrame& frame, CPoint where, CButtonState state) {
    const auto alive = shared(&frame);  // a press may close the frame
    press(frame, where, state);
    release(frame, where, state);
}

void leave(CFrame& frame) {
    frame.input().pointerLeft();
}

void wheel(CFrame& frame, CPoint where, double up, CButtonState modifiers, double right) {
    frame.input().wheelTurned(where, right, up, modifiers);
}

bool key(CFrame& frame, VirtualKey key, CButtonState modifiers) {
    KeyboardEvent event;
    event.virt = key;
    event.modifiers = modifiersOf(modifiers);
    return frame.input().keyChanged(event);
}

bool type(CFrame& frame, const char* utf8, CButtonState modifiers) {
    const std::string text(utf8);
    bool used = true;
    for (size_t position = 0; position < text.size();) {
        KeyboardEvent event;
        event.character = utf8::next(text, position);
        event.modifiers = modifiersOf(modifiers);
        used = frame.input().keyChanged(event) && used;
    }
    return used;
}

HeldClock::HeldClock() {
    holdClock(now_);
}

HeldClock::~HeldClock() {
    releaseClock();
}

void HeldClock::run(CFrame& frame, uint64_t milliseconds) {
    constexpr uint64_t kStep = 5;
    for (uint64_t done = 0; done < milliseconds; done += kStep) {
        skip(kStep);
        frame.idle();
    }
}

void HeldClock::skip(uint64_t milliseconds) {
    now_ += milliseconds;
    holdClock(now_);
}

}  // namespace VSTGUI::headless
