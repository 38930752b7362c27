// Paths are in the system's code page.
#include "platform/path_text.h"

#include <windows.h>

namespace platform {
namespace {

std::string converted(const std::string& text, UINT from, UINT to) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    wide.resize(MultiByteToWideChar(from, 0, text.data(), size, wide.data(), size));
    const int wideSize = static_cast<int>(wide.size());
    const int length =
        WideCharToMultiByte(to, 0, wide.data(), wideSize, nullptr, 0, nullptr, nullptr);
    std::string result(length, '\0');
    WideCharToMultiByte(to, 0, wide.data(), wideSize, result.data(), length, nullptr, nullptr);
    return result;
}

}  // namespace

std::string utf8FromPath(const std::string& path) {
    return converted(path, CP_ACP, CP_UTF8);
}

std::string pathFromUtf8(const std::string& text) {
    return converted(text, CP_UTF8, CP_ACP);
}

std::filesystem::path systemPath(const std::string& path) {
    return std::filesystem::u8path(utf8FromPath(path));
}

std::string pathText(const std::filesystem::path& path) {
    return pathFromUtf8(path.u8string());
}

}  // namespace platform
