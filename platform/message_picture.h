// The contents of a message window: heading, lines of text, icon and OK button.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/message_box.h"

namespace platform {

// Whole pixels; right and bottom are exclusive.
struct PixelArea {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool holds(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
};

// Row by row from the top, 0xFFRRGGBB.
struct MessagePicture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;
    PixelArea button;
};

// Wraps long lines. Text that exceeds the largest height (pixels) ends in an ellipsis. Letters that
// the embedded faces lack show as a box.
MessagePicture drawMessage(const std::string& title, const std::string& text, MessageIcon icon,
                           bool buttonPressed, int largestHeight);

}  // namespace platform
