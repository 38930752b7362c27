// Replaces a file: writes a temporary file beside it that nobody else can open, then renames that.
#include "platform/busy_file_win32.h"
#include "platform/system_replacement.h"

#include <algorithm>

#include <windows.h>

namespace platform {
namespace {

// Folders and write-protected files are never replaced.
bool mayReplace(const std::string& path, Links links) {
    const DWORD link = links == Links::kRefuse ? FILE_ATTRIBUTE_REPARSE_POINT : 0;
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ||
           !(attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY | link));
}

HANDLE openAlone(const std::string& path) {
    return CreateFileA(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool writeAll(HANDLE file, const std::string& contents) {
    std::size_t written = 0;
    while (written < contents.size()) {
        const auto wanted =
            static_cast<DWORD>(std::min<std::size_t>(contents.size() - written, 1u << 30));
        DWORD count = 0;
        if (!WriteFile(file, contents.data() + written, wanted, &count, nullptr)) return false;
        if (count == 0) return false;
        written += count;
    }
    return FlushFileBuffers(file) != 0;
}

}  // namespace

bool replaceSystemFile(const std::string& path, Links links, const ContentsMaker& contents) {
    char target[MAX_PATH];
    const DWORD length = GetFullPathNameA(path.c_str(), MAX_PATH, target, nullptr);
    if (length == 0 || length >= MAX_PATH || !mayReplace(target, links)) return false;

    const std::string temporary = target + std::string(kReplacementEnding);
    HANDLE file = INVALID_HANDLE_VALUE;
    tryPatiently([&] { return (file = openAlone(temporary)) != INVALID_HANDLE_VALUE; });
    if (file == INVALID_HANDLE_VALUE) return false;
    const auto bytes = contents();
    const bool placed =
        bytes && writeAll(file, *bytes) &&
        tryPatiently([&] { return renameOpenFile(file, target); }, ERROR_ACCESS_DENIED);
    if (placed) {
        FlushFileBuffers(file);
    } else {
        FILE_DISPOSITION_INFO removal = {TRUE};
        SetFileInformationByHandle(file, FileDispositionInfo, &removal, sizeof removal);
    }
    CloseHandle(file);
    return placed;
}

}  // namespace platform
