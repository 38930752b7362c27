// A private X server for a test, and a host's windows on it.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>
#include <vector>

namespace VSTGUI {

// Starts Xvfb and points DISPLAY to it. Drives pointer and keys through xdotool, that is XTEST.
class X11Server {
  public:
    explicit X11Server(const std::string& screen);  // like "800x600x24"
    ~X11Server();
    X11Server(const X11Server&) = delete;
    X11Server& operator=(const X11Server&) = delete;

    // False where Xvfb or xdotool is not installed.
    bool isRunning() const { return connection_ != nullptr; }

    // A mapped top-level window; depth 0 is the screen's own.
    xcb_window_t makeWindow(int x, int y, int width, int height, int depth = 0);
    void destroyWindow(xcb_window_t window);
    // What a window manager sends to the top-level window in front when its close button is
    // pressed.
    void askTopWindowToClose();
    void listenForKeys(xcb_window_t window) const;
    // Key presses that reached the listening windows since the last call.
    int takeKeyPresses() const;
    // Words of an xdotool command line.
    void drive(const std::string& command) const;
    // The screen's content as 32-bit words, row by row; empty if the server refuses.
    std::vector<uint32_t> contents(int x, int y, int width, int height) const;

  private:
    xcb_visualid_t visualOfDepth(int depth) const;

    int process_ = -1;
    xcb_connection_t* connection_ = nullptr;
    const xcb_screen_t* screen_ = nullptr;
};

}  // namespace VSTGUI
