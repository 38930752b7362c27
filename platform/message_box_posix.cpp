// Messages without a display: one line on standard error.
#include "platform/system_message.h"

#include <cstdio>

namespace platform {

void showSystemMessage(const std::string& title, const std::string& text, MessageIcon) {
    std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
}

}  // namespace platform
