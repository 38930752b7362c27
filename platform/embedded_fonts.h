// The TrueType files built into the module.
#pragma once

#include <cstdint>

namespace platform {

// A sans-serif face with Latin, Greek, Cyrillic and Hebrew letters. Valid as long as the module is
// loaded.
const uint8_t* embeddedFont(bool bold, bool italic);

}  // namespace platform
