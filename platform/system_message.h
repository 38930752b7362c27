// Shows a message through the system. One definition per system; only showMessage calls it.
#pragma once

#include <string>

#include "platform/message_box.h"

namespace platform {

void showSystemMessage(const std::string& title, const std::string& text, MessageIcon icon);

}  // namespace platform
