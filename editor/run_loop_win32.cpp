// The system's message loop serves the windows. VSTGUI needs OLE on the thread that opens them.
#include "editor/toolkit.h"

#include <windows.h>

#include <ole2.h>

#include "platform/module_handle.h"
#include "vstgui/lib/vstguiinit.h"
#include "vstgui/vstgui.h"

namespace editor {

void Toolkit::setUp() {
    OleInitialize(nullptr);
    VSTGUI::init(static_cast<VSTGUI::PlatformInstanceHandle>(platform::moduleHandle()));
}

void Toolkit::tearDown() {
    VSTGUI::exit();
    OleUninitialize();
}

VSTGUI::IPlatformFrameConfig* Toolkit::frameConfig() {
    return nullptr;
}

void Toolkit::pump() {}

}  // namespace editor
