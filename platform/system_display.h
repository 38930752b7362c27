// What each system implements for display.h.
#pragma once

#include <optional>

#include "platform/display.h"

namespace platform {

std::optional<Display> systemDisplay();

}  // namespace platform
