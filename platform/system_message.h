// The system's own way to show a message: one definition per system, called by showMessage alone.
#pragma once

#include <string>

#include "platform/message_box.h"

namespace platform {

void showSystemMessage(const std::string& title, const std::string& text, MessageIcon icon);

}  // namespace platform
