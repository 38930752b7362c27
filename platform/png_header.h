// The size of a PNG picture from the first bytes of its file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

constexpr std::size_t kPngHeaderBytes = 24;

struct PngSize {
    std::uint32_t width;
    std::uint32_t height;
};

// Returns nothing if the bytes do not begin like a PNG file.
std::optional<PngSize> readPngSize(std::string_view start);

}  // namespace platform
