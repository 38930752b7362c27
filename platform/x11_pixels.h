// Sends pixels to an X server the way the visual of its screen wants them.
#pragma once

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

// Rows of 32-bit words, red, green and blue in the lower three bytes from the highest down.
struct PixelRows {
    const uint32_t* first;
    size_t stride;  // words from one row to the next
    int width;
    int height;
};

// The format of windows that have the visual of the screen's root.
class X11PixelFormat {
  public:
    // Nothing for visuals without three colour masks and 2, 3 or 4 bytes a pixel.
    static std::optional<X11PixelFormat> of(const xcb_setup_t& setup, const xcb_screen_t& screen);

    // Puts the rows into the window with their corner at `left`, `top`, in requests that the server
    // takes. Does not flush.
    void put(xcb_connection_t* connection, xcb_window_t window, xcb_gcontext_t graphics,
             const PixelRows& rows, int left, int top) const;

  private:
    size_t bytesPerRow(int width) const;
    void pack(const PixelRows& rows, std::vector<uint8_t>& packed) const;
    uint32_t packed(uint32_t pixel) const;

    uint32_t masks_[3] = {};  // red, green, blue
    int bytesPerPixel_ = 4;
    int rowPadding_ = 4;  // bytes
    uint8_t depth_ = 24;
    bool highByteFirst_ = false;
    bool asStored_ = false;  // the same layout as our own
};

}  // namespace platform
