// Messages in a window, or on standard error without a display.
#include "platform/system_message.h"

#include <cstdio>

#include "platform/message_window_x11.h"

namespace platform {

void showSystemMessage(const std::string& title, const std::string& text, MessageIcon icon) {
    if (showMessageWindow(title, text, icon)) return;
    std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
}

}  // namespace platform
