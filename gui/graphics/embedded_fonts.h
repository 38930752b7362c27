// The TrueType files that are built into the module.
#pragma once

#include <cstdint>

namespace VSTGUI {

// The face for the bold and italic bits of a CTxtFace.
const uint8_t* embeddedFont(bool bold, bool italic);

}  // namespace VSTGUI
