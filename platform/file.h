// Files and folders, the same way on every system. Paths are UTF-8 with '/' on Linux, 8-bit with
// '\' on Windows.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace platform {

#ifdef _WIN32
constexpr char kSeparator = '\\';
#else
constexpr char kSeparator = '/';
#endif

// The whole of a regular file. Nothing when it is missing, unreadable, not a regular file (a pipe
// or a folder would block or never end) or longer than maxBytes.
std::optional<std::string> readFile(const std::string& path, std::size_t maxBytes);

// Puts `contents` in place of the file, or creates it: written to a temporary file beside it and
// renamed, so that any moment shows the old file or the new one, whole. False leaves the old one.
bool writeFile(const std::string& path, const std::string& contents);

// Whether path names a regular file, links followed.
bool fileExists(const std::string& path);

// Whether a folder can be read and has any entry; the entries "." and ".." count.
bool folderHasEntry(const std::string& folder);

// The names of a folder's entries but "." and "..", in the order of the file system; none when it
// cannot be read.
std::vector<std::string> folderEntries(const std::string& folder);

// False when it could not be made, also when it is there already.
bool createFolder(const std::string& folder);

}  // namespace platform
