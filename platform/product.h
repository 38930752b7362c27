// Who made the product, and what it is called.
#pragma once

#include <cstdint>

#include "platform/four_char_code.h"

namespace platform {

constexpr const char* kProductName = "Quarzel Strings";
constexpr const char* kCompanyName = "Tembrilon";
constexpr const char* kCompanyDomain = "tembrilon.com";
constexpr std::uint32_t kProductCode = fourCharCode("seni");  // in bank files and to hosts

// Major, minor and patch level.
const char* productVersion();

}  // namespace platform
