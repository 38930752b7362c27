// Messages in the page.
#include "platform/system_message.h"
#include "platform/web_page.h"

namespace platform {

void showSystemMessage(const std::string& title, const std::string& text, MessageIcon) {
    quarzelShowMessage(title.c_str(), text.c_str());
}

}  // namespace platform
