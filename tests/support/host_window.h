// A host's window for a test, and the musician's pointer in it, on either system.
#pragma once

#include <cstdint>
#include <memory>

// Positions are pixels of the window. X11: a private server, driven through XTEST. Windows: the
// messages of the mouse, sent to the window that the plug-in has made.
class HostWindow {
  public:
    enum Button { kLeft = 1, kRight = 3 };

    HostWindow(int width, int height);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    // False where no window can be had: the test is to be skipped.
    bool isOpen() const;
    // For effEditOpen.
    void* parent() const;

    void click(int x, int y, Button button = kLeft);
    void drag(int fromX, int fromY, int toX, int toY);
    // Runs the host's own loop once; the plug-in's idle is the caller's.
    void serve();
    // What can be seen there, 0xRRGGBB.
    std::uint32_t pixel(int x, int y) const;

  private:
    struct System;
    std::unique_ptr<System> system_;
};
