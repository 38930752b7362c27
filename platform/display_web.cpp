// The page tells the editor by itself how large everything is.
#include "platform/system_display.h"

namespace platform {

std::optional<Display> systemDisplay() {
    return std::nullopt;
}

}  // namespace platform
