// Checks for a display, because VSTGUI on X11 assumes that there is one.
#include <xcb/xcb.h>

#include "editor/toolkit.h"

namespace editor {

bool Toolkit::hasDisplay() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

}  // namespace editor
