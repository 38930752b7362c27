// Messages through the Windows message box.
#include "platform/system_message.h"

#include <windows.h>

namespace platform {

void showSystemMessage(const std::string& title, const std::string& text, MessageIcon icon) {
    const UINT iconFlag = icon == MessageIcon::kError ? MB_ICONERROR : 0;
    MessageBoxA(nullptr, text.c_str(), title.c_str(), MB_OK | iconFlag);
}

}  // namespace platform
