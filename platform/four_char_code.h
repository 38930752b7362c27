// Four-character codes of file formats and interfaces.
#pragma once

#include <cstdint>

namespace platform {

// The first character is in the most significant byte.
constexpr std::uint32_t fourCharCode(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<unsigned char>(text[i]);
    return code;
}

}  // namespace platform
