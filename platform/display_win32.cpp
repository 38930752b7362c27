// Asks for the primary monitor.
#include <windows.h>

#include "platform/system_display.h"

namespace platform {

// A program that leaves scaling to the system gets the usual resolution.
std::optional<Display> systemDisplay() {
    RECT area{};
    if (!SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0)) return std::nullopt;
    double scale = 1;
    if (HDC const screen = GetDC(nullptr)) {
        scale = GetDeviceCaps(screen, LOGPIXELSX) / 96.0;
        ReleaseDC(nullptr, screen);
    }
    return Display{static_cast<int>(area.right - area.left),
                   static_cast<int>(area.bottom - area.top), scale};
}

}  // namespace platform
