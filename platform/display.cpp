// Chooses between the system's display and a test's.
#include "platform/display.h"

#include "platform/system_display.h"

namespace platform {
namespace {

bool replaced = false;
std::optional<Display> replacement;

}  // namespace

std::optional<Display> mainDisplay() {
    return replaced ? replacement : systemDisplay();
}

ScopedDisplay::ScopedDisplay(const std::optional<Display>& display) {
    replaced = true;
    replacement = display;
}

ScopedDisplay::~ScopedDisplay() {
    replaced = false;
}

}  // namespace platform
