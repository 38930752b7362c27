// A message in an X11 window.
#pragma once

#include <string>

#include "platform/message_box.h"

namespace platform {

// Shows the message and waits until its button, Return, Enter, Space, Escape or the window manager
// dismisses it. Any thread, several at once. The host's own windows are not served meanwhile.
// Returns false if no display can be opened or the display is lost first.
bool showMessageWindow(const std::string& title, const std::string& text, MessageIcon icon);

}  // namespace platform
