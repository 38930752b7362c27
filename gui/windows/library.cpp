// Initialises the layer for the module that contains it.
#include "gui/windows/library.h"
#include "gui/graphics/font.h"
#include "gui/windows/native_window.h"

namespace VSTGUI {
namespace {

int users = 0;
PlatformInstanceHandle module = nullptr;

}  // namespace

void init(PlatformInstanceHandle instance) {
    if (users++ > 0) return;
    module = instance;
    makeStandardFonts();
}

void exit() {
    if (users == 0 || --users > 0) return;
    releaseStandardFonts();
    releaseNativeResources();
    module = nullptr;
}

PlatformInstanceHandle moduleHandle() {
    return module;
}

}  // namespace VSTGUI
