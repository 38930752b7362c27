// The main display: how much room it has, and how large the user wants things on it.
#pragma once

#include <optional>

namespace platform {

struct Display {
    int width;  // in pixels, without the bars of the desktop
    int height;
    double scale;  // 1 is the usual size
};

// About the height of the title of a window, in pixels.
constexpr int kTitleBar = 36;

// Nothing if there is none, or if the system does not tell.
std::optional<Display> mainDisplay();

// Substitutes another display, or none, within a scope. For tests.
class ScopedDisplay {
  public:
    explicit ScopedDisplay(const std::optional<Display>& display);
    ~ScopedDisplay();
    ScopedDisplay(const ScopedDisplay&) = delete;
    ScopedDisplay& operator=(const ScopedDisplay&) = delete;
};

}  // namespace platform
