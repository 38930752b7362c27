// Files through the Windows interface; paths are 8-bit.
#include "platform/file.h"

#include <algorithm>

#include <windows.h>

namespace platform {
namespace {

std::optional<std::string> readAll(HANDLE file, std::size_t maxBytes) {
    LARGE_INTEGER length = {};
    if (GetFileType(file) != FILE_TYPE_DISK || !GetFileSizeEx(file, &length)) return std::nullopt;
    if (static_cast<unsigned long long>(length.QuadPart) > maxBytes) return std::nullopt;

    std::string contents(static_cast<std::size_t>(length.QuadPart), '\0');
    std::size_t filled = 0;
    while (filled < contents.size()) {
        const auto wanted =
            static_cast<DWORD>(std::min<std::size_t>(contents.size() - filled, 1u << 30));
        DWORD count = 0;
        if (!ReadFile(file, &contents[filled], wanted, &count, nullptr)) return std::nullopt;
        if (count == 0) break;  // the file shrank while it was read
        filled += count;
    }
    contents.resize(filled);
    return contents;
}

}  // namespace

std::optional<std::string> readFile(const std::string& path, std::size_t maxBytes) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    auto contents = readAll(file, maxBytes);
    CloseHandle(file);
    return contents;
}

bool fileExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace platform
