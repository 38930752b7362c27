// A window of the system. It shows pixels, and reports the pointer, the wheel, keys and ticks.
#pragma once

#include "gui/base/button_state.h"
#include "gui/base/events.h"
#include "gui/base/reference.h"
#include "gui/graphics/pixel_buffer.h"

#include <memory>

namespace VSTGUI {

// Receives the reports. Positions are in window pixels. Each state holds the buttons and modifiers
// named in the call.
class WindowClient {
  public:
    virtual ~WindowClient() = default;

    virtual void pointerPressed(CPoint where, CButtonState buttonAndModifiers) = 0;
    virtual void pointerReleased(CPoint where, CButtonState buttonAndModifiers) = 0;
    virtual void pointerMoved(CPoint where, CButtonState heldAndModifiers) = 0;
    virtual void pointerLeft() = 0;
    virtual void pointerLost() = 0;  // no release will follow the press
    // In notches. Up and right are positive.
    virtual void wheelTurned(CPoint where, double right, double up, CButtonState modifiers) = 0;
    // Returns true if the key was used. Otherwise the window passes it on to the host's window.
    virtual bool keyChanged(KeyboardEvent& event) = 0;
    virtual void keyboardLost() = 0;
    virtual void drawPending() = 0;                 // bring the picture up to date
    virtual void exposed(const IntRect& area) = 0;  // show this part of it again
    virtual void ticked() = 0;  // about 60 times a second, where the system has a timer

    // A call may close and release the client. Hold a reference to this object during the call.
    virtual IReference& owner() = 0;
};

class NativeWindow {
  public:
    virtual ~NativeWindow() = default;

    // Destroys the system's window. Nothing is reported afterwards.
    virtual void close() = 0;
    virtual void resize(int width, int height) = 0;
    // Shows `area` of the picture, at the latest when flush() is called. The picture must have the
    // window's size.
    virtual void show(const PixelBuffer& picture, const IntRect& area) = 0;
    virtual void flush() {}
    // Takes the keyboard focus. Called for a press.
    virtual void takeKeyboard() = 0;
    // Hides the pointer during a drag. Moves are then reported as if the screen had no edges.
    virtual void hidePointer() = 0;
    // Shows the pointer again, where it was hidden. Does nothing if it is not hidden.
    virtual void showPointer() = 0;
    // Reports what has happened since the last call, where the system does not do so itself.
    virtual void pump() = 0;
    // Whether there may be anything to report. What flush() has received is not counted.
    virtual bool hasReports() const { return true; }
};

// Creates a child window at (0, 0) of the system window `parent`. Returns null on failure.
std::unique_ptr<NativeWindow> openNativeWindow(void* parent, int width, int height,
                                               WindowClient& client);

// Releases resources of the module. Call it after the last window has closed.
void releaseNativeResources();

}  // namespace VSTGUI
