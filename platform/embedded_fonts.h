// The TrueType files that are built into the module.
#pragma once

#include <cstdint>

namespace platform {

// A sans-serif face with Latin, Greek, Cyrillic and Hebrew letters; lives as long as the module.
const uint8_t* embeddedFont(bool bold, bool italic);

}  // namespace platform
