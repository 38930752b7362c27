// The page serves the window: it calls idle.
#include "editor/toolkit.h"

#include "vstgui/lib/vstguiinit.h"
#include "vstgui/vstgui.h"

namespace editor {

void Toolkit::setUp() {
    VSTGUI::init(nullptr);
}

void Toolkit::tearDown() {
    VSTGUI::exit();
}

VSTGUI::IPlatformFrameConfig* Toolkit::frameConfig() {
    return nullptr;
}

void Toolkit::pump() {}

}  // namespace editor
