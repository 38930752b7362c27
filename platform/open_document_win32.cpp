// Documents through the Windows shell.
#include "platform/system_document.h"

#include <windows.h>

#include <shellapi.h>

namespace platform {
namespace {

constexpr const char* kWordProcessor = R"(C:\Program Files\Windows NT\Accessories\wordpad.exe)";

bool open(const char* file, const char* arguments) {
    const HINSTANCE result =
        ShellExecuteA(nullptr, "open", file, arguments, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > 32;  // documented: 32 and below are errors
}

}  // namespace

bool openSystemDocument(const std::string& path) {
    const std::string quoted = '"' + path + '"';
    // Newer systems lack the word processor.
    return open(kWordProcessor, quoted.c_str()) || open(path.c_str(), nullptr);
}

}  // namespace platform
