// A private X server for a test, and a host's windows on it.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace VSTGUI {

// Starts Xvfb and sets DISPLAY to it. Drives the pointer and keys with xdotool, which uses XTEST.
class X11Server {
  public:
    // The screen is like "800x600x24". Throws if the server is there but does not start.
    explicit X11Server(const std::string& screen);
    ~X11Server();
    X11Server(const X11Server&) = delete;
    X11Server& operator=(const X11Server&) = delete;

    // False if Xvfb or xdotool is not installed.
    bool isRunning() const { return connection_ != nullptr; }

    // Creates and maps a top-level window. Depth 0 means that of the screen.
    xcb_window_t makeWindow(int x, int y, int width, int height, int depth = 0);
    void destroyWindow(xcb_window_t window);
    // Sends the close request of a window manager to the topmost window.
    void askTopWindowToClose();
    void listenForKeys(xcb_window_t window) const;
    // The number of key presses that reached the listening windows since the last call.
    int takeKeyPresses() const;
    // `command` is an xdotool command line.
    void drive(const std::string& command) const;
    // Where the pointer is on the screen.
    std::pair<int, int> pointer() const;
    // The pixels of the screen as 32-bit words, row by row. Empty if the server refuses.
    std::vector<uint32_t> contents(int x, int y, int width, int height) const;

  private:
    xcb_visualid_t visualOfDepth(int depth) const;

    int process_ = -1;
    xcb_connection_t* connection_ = nullptr;
    const xcb_screen_t* screen_ = nullptr;
};

}  // namespace VSTGUI
