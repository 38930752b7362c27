// Sends pixels to an X server in the format of the screen's visual.
#include "platform/x11_pixels.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace platform {
namespace {

const xcb_visualtype_t* rootVisual(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem;
         xcb_depth_next(&depth))
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem;
             xcb_visualtype_next(&visual))
            if (visual.data->visual_id == screen.root_visual) return visual.data;
    return nullptr;
}

// The upper bits of a byte, shifted to the mask's position.
uint32_t underMask(uint32_t byte, uint32_t mask) {
    const int lowest = __builtin_ctz(mask);
    const int bits = 32 - __builtin_clz(mask) - lowest;
    const uint32_t value = bits <= 8 ? byte >> (8 - bits) : byte << (bits - 8);
    return value << lowest;
}

}  // namespace

std::optional<X11PixelFormat> X11PixelFormat::of(const xcb_setup_t& setup,
                                                 const xcb_screen_t& screen) {
    const xcb_visualtype_t* const visual = rootVisual(screen);
    if (!visual || !visual->red_mask || !visual->green_mask || !visual->blue_mask) return {};
    for (auto format = xcb_setup_pixmap_formats_iterator(&setup); format.rem;
         xcb_format_next(&format)) {
        if (format.data->depth != screen.root_depth) continue;
        if (format.data->bits_per_pixel < 16) return {};
        X11PixelFormat result;
        result.masks_[0] = visual->red_mask;
        result.masks_[1] = visual->green_mask;
        result.masks_[2] = visual->blue_mask;
        result.depth_ = screen.root_depth;
        result.bytesPerPixel_ = format.data->bits_per_pixel / 8;
        result.rowPadding_ = format.data->scanline_pad / 8;
        result.highByteFirst_ = setup.image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST;
        result.asStored_ = result.bytesPerPixel_ == 4 && !result.highByteFirst_ &&
                           visual->red_mask == 0xFF0000 && visual->green_mask == 0xFF00 &&
                           visual->blue_mask == 0xFF;
        return result;
    }
    return {};
}

size_t X11PixelFormat::bytesPerRow(int width) const {
    const size_t bytes = static_cast<size_t>(width) * bytesPerPixel_;
    return (bytes + rowPadding_ - 1) / rowPadding_ * rowPadding_;
}

uint32_t X11PixelFormat::packed(uint32_t pixel) const {
    return underMask(pixel >> 16 & 255, masks_[0]) | underMask(pixel >> 8 & 255, masks_[1]) |
           underMask(pixel & 255, masks_[2]);
}

// Each row is padded as the server requires.
void X11PixelFormat::pack(const PixelRows& rows, uint8_t* packedRows) const {
    const size_t rowBytes = bytesPerRow(rows.width);
    const size_t pixelBytes = static_cast<size_t>(rows.width) * bytesPerPixel_;
    uint8_t* row = packedRows;
    const uint32_t* from = rows.first;
    for (int y = 0; y < rows.height; ++y, row += rowBytes, from += rows.stride) {
        std::memset(row + pixelBytes, 0, rowBytes - pixelBytes);
        if (asStored_) {
            std::memcpy(row, from, pixelBytes);
            continue;
        }
        uint8_t* to = row;
        for (int x = 0; x < rows.width; ++x, to += bytesPerPixel_) {
            const uint32_t pixel = packed(from[x]);
            for (int i = 0; i < bytesPerPixel_; ++i)
                to[highByteFirst_ ? bytesPerPixel_ - 1 - i : i] =
                    static_cast<uint8_t>(pixel >> (8 * i));
        }
    }
}

void X11PixelFormat::put(xcb_connection_t* connection, xcb_window_t window, xcb_gcontext_t graphics,
                         const PixelRows& rows, int left, int top) const {
    if (rows.width <= 0 || rows.height <= 0) return;
    constexpr size_t kRequestHead = 64;
    const size_t limit = size_t{xcb_get_maximum_request_length(connection)} * 4 - kRequestHead;
    const size_t fitting = limit / bytesPerRow(rows.width);
    const int rowsAtOnce = static_cast<int>(std::clamp<size_t>(fitting, 1, rows.height));
    const size_t rowBytes = bytesPerRow(rows.width);
    // Not set to zero first, which would take as long as copying the pixels.
    const std::unique_ptr<uint8_t[]> packedRows(new uint8_t[rowBytes * rowsAtOnce]);
    for (int y = 0; y < rows.height; y += rowsAtOnce) {
        const PixelRows strip{rows.first + y * rows.stride, rows.stride, rows.width,
                              std::min(rowsAtOnce, rows.height - y)};
        pack(strip, packedRows.get());
        xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, graphics,
                      static_cast<uint16_t>(strip.width), static_cast<uint16_t>(strip.height),
                      static_cast<int16_t>(left), static_cast<int16_t>(top + y), 0, depth_,
                      static_cast<uint32_t>(rowBytes * strip.height), packedRows.get());
    }
}

}  // namespace platform
