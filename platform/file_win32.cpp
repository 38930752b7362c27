// Files through the Windows API. Paths are 8-bit.
#include "platform/file.h"

#include <algorithm>

#include <windows.h>

namespace platform {
namespace {

std::optional<std::string> readStart(HANDLE file, std::size_t bytes) {
    LARGE_INTEGER length = {};
    if (GetFileType(file) != FILE_TYPE_DISK || !GetFileSizeEx(file, &length)) return std::nullopt;

    const auto size = static_cast<unsigned long long>(length.QuadPart);
    std::string contents(static_cast<std::size_t>(std::min<unsigned long long>(size, bytes)), '\0');
    std::size_t filled = 0;
    while (filled < contents.size()) {
        const auto wanted =
            static_cast<DWORD>(std::min<std::size_t>(contents.size() - filled, 1u << 30));
        DWORD count = 0;
        if (!ReadFile(file, &contents[filled], wanted, &count, nullptr)) return std::nullopt;
        if (count == 0) break;  // the file has shrunk since
        filled += count;
    }
    contents.resize(filled);
    return contents;
}

}  // namespace

std::optional<std::string> readFileStart(const std::string& path, std::size_t bytes, Links links) {
    const DWORD noLink = links == Links::kRefuse ? FILE_FLAG_OPEN_REPARSE_POINT : 0;
    const HANDLE file =
        CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | noLink, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    BY_HANDLE_FILE_INFORMATION found = {};
    const bool isRefused = noLink && (!GetFileInformationByHandle(file, &found) ||
                                      found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT);
    auto contents = isRefused ? std::nullopt : readStart(file, bytes);
    CloseHandle(file);
    return contents;
}

bool fileExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool folderExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool folderHasEntry(const std::string& folder) {
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA((folder + "\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return false;
    FindClose(search);
    return true;
}

std::vector<std::string> folderEntries(const std::string& folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA((folder + "\\*.*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        const std::string name = entry.cFileName;
        if (name != "." && name != "..") names.push_back(name);
    } while (FindNextFileA(search, &entry));
    FindClose(search);
    return names;
}

bool createFolder(const std::string& folder) {
    return CreateDirectoryA(folder.c_str(), nullptr) != 0;
}

}  // namespace platform
