// Packs pixels the way an X server's visual wants them.
#pragma once

#include "gui/graphics/pixel_buffer.h"

#include <xcb/xcb.h>

#include <optional>
#include <vector>

namespace VSTGUI {

class X11PixelFormat {
  public:
    // Nothing for visuals without three colour masks and 2, 3 or 4 bytes a pixel.
    static std::optional<X11PixelFormat> of(const xcb_setup_t& setup, const xcb_screen_t& screen);

    size_t bytesPerRow(int width) const;
    // Rows of the area one after the other, each padded as the server demands.
    void pack(const PixelBuffer& picture, const IntRect& area, std::vector<uint8_t>& packed) const;

  private:
    uint32_t packed(uint32_t pixel) const;

    uint32_t masks_[3] = {};  // red, green, blue
    int bytesPerPixel_ = 4;
    int rowPadding_ = 4;  // bytes
    bool highByteFirst_ = false;
    bool asStored_ = false;  // the same layout as our own
};

}  // namespace VSTGUI
