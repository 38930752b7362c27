// The system's window: shows pixels, and reports the pointer, the wheel, the keys and the time.
#pragma once

#include "gui/base/button_state.h"
#include "gui/base/events.h"
#include "gui/base/reference.h"
#include "gui/graphics/pixel_buffer.h"

#include <memory>

namespace VSTGUI {

// Positions are pixels of the window. States hold the buttons and modifiers the call speaks of.
class WindowClient {
  public:
    virtual ~WindowClient() = default;

    virtual void pointerPressed(CPoint where, CButtonState buttonAndModifiers) = 0;
    virtual void pointerReleased(CPoint where, CButtonState buttonAndModifiers) = 0;
    virtual void pointerMoved(CPoint where, CButtonState heldAndModifiers) = 0;
    virtual void pointerLeft() = 0;
    virtual void pointerLost() = 0;  // a drag that will see no release
    // Notches, up and right positive.
    virtual void wheelTurned(CPoint where, double right, double up, CButtonState modifiers) = 0;
    // True if somebody used the key; else the window leaves it to the one above, the host's.
    virtual bool keyChanged(KeyboardEvent& event) = 0;
    virtual void keyboardLost() = 0;
    virtual void drawPending() = 0;                 // brings the picture up to date
    virtual void exposed(const IntRect& area) = 0;  // shows that part of it again
    virtual void ticked() = 0;  // about 60 times a second where the system drives the time

    // Kept by whoever calls the client, which may be closed and released by such a call.
    virtual IReference& owner() = 0;
};

class NativeWindow {
  public:
    virtual ~NativeWindow() = default;

    // Destroys the system's window; nothing is reported any more.
    virtual void close() = 0;
    virtual void resize(int width, int height) = 0;
    // Shows `area` of a picture that has the window's size.
    virtual void show(const PixelBuffer& picture, const IntRect& area) = 0;
    // Takes the keyboard; called for a press.
    virtual void takeKeyboard() = 0;
    // Reports what has happened since the last call, where the system does not call by itself.
    virtual void pump() = 0;
};

// A child window at (0, 0) of the system's window `parent`; null if it cannot be made.
std::unique_ptr<NativeWindow> openNativeWindow(void* parent, int width, int height,
                                               WindowClient& client);

// Called when the last user of the layer is gone; no window is open then.
void releaseNativeResources();

}  // namespace VSTGUI
