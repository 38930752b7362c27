// Colours with 8 bits per channel, not premultiplied.
#pragma once

#include <cstdint>

namespace VSTGUI {

struct CColor {
    constexpr CColor() = default;
    constexpr CColor(uint8_t red, uint8_t green, uint8_t blue, uint8_t alpha = 255)
        : red(red), green(green), blue(blue), alpha(alpha) {}

    constexpr bool operator==(const CColor& other) const {
        return red == other.red && green == other.green && blue == other.blue &&
               alpha == other.alpha;
    }
    constexpr bool operator!=(const CColor& other) const { return !(*this == other); }

    uint8_t red = 255;
    uint8_t green = 255;
    uint8_t blue = 255;
    uint8_t alpha = 255;
};

constexpr CColor MakeCColor(uint8_t red = 0, uint8_t green = 0, uint8_t blue = 0,
                            uint8_t alpha = 255) {
    return CColor(red, green, blue, alpha);
}

inline constexpr CColor kTransparentCColor(255, 255, 255, 0);
inline constexpr CColor kBlackCColor(0, 0, 0);
inline constexpr CColor kWhiteCColor(255, 255, 255);
inline constexpr CColor kGreyCColor(127, 127, 127);
inline constexpr CColor kRedCColor(255, 0, 0);
inline constexpr CColor kGreenCColor(0, 255, 0);
inline constexpr CColor kBlueCColor(0, 0, 255);
inline constexpr CColor kYellowCColor(255, 255, 0);
inline constexpr CColor kMagentaCColor(255, 0, 255);
inline constexpr CColor kCyanCColor(0, 255, 255);

}  // namespace VSTGUI
