// Sends pixels to an X server in the format of the screen's visual.
#pragma once

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace platform {

// Rows of 32-bit words, 0xRRGGBB; the upper byte is ignored.
struct PixelRows {
    const uint32_t* first;
    size_t stride;  // in words
    int width;
    int height;
};

// The pixel format of windows with the root window's visual.
class X11PixelFormat {
  public:
    // Returns nothing for visuals without three colour masks and 2, 3 or 4 bytes per pixel.
    static std::optional<X11PixelFormat> of(const xcb_setup_t& setup, const xcb_screen_t& screen);

    // Draws the rows into the window with their corner at `left`, `top`, split into requests no
    // larger than the server accepts. Does not flush.
    void put(xcb_connection_t* connection, xcb_window_t window, xcb_gcontext_t graphics,
             const PixelRows& rows, int left, int top) const;

  private:
    size_t bytesPerRow(int width) const;
    void pack(const PixelRows& rows, uint8_t* packedRows) const;
    uint32_t packed(uint32_t pixel) const;

    uint32_t masks_[3] = {};  // red, green, blue
    int bytesPerPixel_ = 4;
    int rowPadding_ = 4;  // bytes
    uint8_t depth_ = 24;
    bool highByteFirst_ = false;
    bool asStored_ = false;  // the window uses our own layout
};

}  // namespace platform
