// Reads PNG pictures of any colour type into premultiplied pixels.
#pragma once

#include "gui/graphics/picture_rows.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace VSTGUI {

// Larger pictures are rejected before their pixels take any memory.
constexpr int kLargestPictureSide = 16384;
constexpr int64_t kLargestPictureArea = int64_t{64} << 20;

// Return nothing unless the input is a valid PNG of a permitted size.
std::optional<PictureRows> readPicture(const uint8_t* bytes, size_t size);
std::optional<PictureRows> readPictureFile(const std::string& utf8Path);

}  // namespace VSTGUI
