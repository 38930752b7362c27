// The system's own message loop serves the windows; VSTGUI wants OLE on the thread that opens them.
#include "editor/toolkit.h"

#include <windows.h>

#include <ole2.h>

namespace editor {

void Toolkit::prepareThread() {
    OleInitialize(nullptr);
}

void Toolkit::releaseThread() {
    OleUninitialize();
}

VSTGUI::IPlatformFrameConfig* Toolkit::frameConfig() {
    return nullptr;
}

void Toolkit::pump() {}

}  // namespace editor
