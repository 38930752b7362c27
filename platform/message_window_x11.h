// A message in a window of its own on X11.
#pragma once

#include <string>

#include "platform/message_box.h"

namespace platform {

// Shows the message and waits until it is dismissed: by its button, Return, Enter, Space, Escape or
// the window manager. Any thread, several at once; the host's own windows are not served meanwhile.
// False when no display can be opened, and when it is lost before that.
bool showMessageWindow(const std::string& title, const std::string& text, MessageIcon icon);

}  // namespace platform
