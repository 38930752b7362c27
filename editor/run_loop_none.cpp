// The system's own message loop serves the windows.
#include "editor/toolkit.h"

namespace editor {

VSTGUI::IPlatformFrameConfig* Toolkit::frameConfig() {
    return nullptr;
}

void Toolkit::pump() {}

}  // namespace editor
