// Messages through the Windows message box, or on standard error if a program wants that.
#include "platform/printed_messages_win32.h"
#include "platform/system_message.h"

#include <cstdio>

#include <windows.h>

namespace platform {

void showSystemMessage(const std::string& title, const std::string& text, MessageIcon icon) {
    if (GetEnvironmentVariableA(kPrintedMessages, nullptr, 0) != 0) {
        std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
        return;
    }
    const UINT iconFlag = icon == MessageIcon::kError ? MB_ICONERROR : 0;
    MessageBoxA(nullptr, text.c_str(), title.c_str(), MB_OK | iconFlag);
}

}  // namespace platform
