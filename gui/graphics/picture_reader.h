// Reads PNG pictures of any colour type into premultiplied pixels.
#pragma once

#include "gui/graphics/picture_rows.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace VSTGUI {

// Larger pictures are rejected before their pixels take any memory.
constexpr int kLargestPictureSide = 16384;
constexpr int64_t kLargestPictureArea = int64_t{64} << 20;

// Return nothing unless the input is a valid PNG of a permitted size. The pixels of the usual kinds
// are unpacked later, if the checksums leave no doubt that it is valid.
std::optional<PictureRows> readPicture(std::vector<uint8_t> bytes);
std::optional<PictureRows> readPictureFile(const std::string& utf8Path);

}  // namespace VSTGUI
