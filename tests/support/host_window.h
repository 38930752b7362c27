// A host window with a simulated pointer, for tests on both systems.
#pragma once

#include <cstdint>
#include <memory>

// Positions are pixels of the window. X11: a private server, driven through XTEST. Windows: mouse
// messages, sent to the plug-in's window.
class HostWindow {
  public:
    enum Button { kLeft = 1, kRight = 3 };

    HostWindow(int width, int height);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    // Returns false if there can be no window; skip the test then.
    bool isOpen() const;
    // For effEditOpen.
    void* parent() const;

    void click(int x, int y, Button button = kLeft);
    void drag(int fromX, int fromY, int toX, int toY);
    // Runs the host's loop once. The caller sends the plug-in's idle.
    void serve();
    // The visible colour, 0xRRGGBB.
    std::uint32_t pixel(int x, int y) const;

  private:
    struct System;
    std::unique_ptr<System> system_;
};
