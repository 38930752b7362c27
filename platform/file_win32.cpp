// Files through the Windows interface; paths are 8-bit.
#include "platform/file.h"

#include <algorithm>
#include <atomic>

#include <windows.h>

namespace platform {
namespace {

// One of its own for each write, so that two writers do not mix.
std::string temporaryName(const std::string& path) {
    static std::atomic<unsigned> serial{0};
    return path + "." + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(serial++) +
           ".tmp";
}

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

std::optional<std::string> readFile(const std::string& path, std::size_t maxBytes) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    auto contents = readAll(file, maxBytes);
    CloseHandle(file);
    return contents;
}

bool writeFile(const std::string& path, const std::string& contents) {
    const std::string temporary = temporaryName(path);
    const HANDLE file = CreateFileA(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    bool whole = writeAll(file, contents);
    whole = CloseHandle(file) && whole;
    if (whole && MoveFileExA(temporary.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
        return true;
    }
    DeleteFileA(temporary.c_str());
    return false;
}

bool fileExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
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
