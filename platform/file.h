// Files and folders, with the same behaviour on every system. Paths are UTF-8 with '/' on Linux,
// 8-bit with '\' on Windows.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform {

#ifdef _WIN32
constexpr char kSeparator = '\\';
#else
constexpr char kSeparator = '/';
#endif

// How a link in place of a file is treated.
enum class Links { kFollow, kRefuse };

// Reads a whole regular file. Returns nothing if it is missing, unreadable, longer than maxBytes,
// or not a regular file (a pipe could block, a folder never ends).
std::optional<std::string> readFile(const std::string& path, std::size_t maxBytes,
                                    Links links = Links::kFollow);
// The same, but of a longer file only the first `bytes`.
std::optional<std::string> readFileStart(const std::string& path, std::size_t bytes,
                                         Links links = Links::kFollow);

// Creates or replaces the file atomically: at any moment, and after a loss of power, it is either
// the old or the new one, whole. Permissions are kept. A link is kept and its target replaced.
// Returns false and leaves the old file if it is write-protected, not a regular file, or locked by
// other writers for too long.
bool writeFile(const std::string& path, const std::string& contents);

// The same, with new contents computed from the present ones (nothing if there is no file). No
// other updateFile or writeFile changes the file in between. Also returns false if the file exists
// but cannot be read.
using FileEdit = std::function<std::string(const std::optional<std::string>& present)>;
bool updateFile(const std::string& path, std::size_t maxBytes, const FileEdit& edit,
                Links links = Links::kFollow);

// Whether path names a regular file. Follows links.
bool fileExists(const std::string& path);

// Whether a folder can be read and has any entry. The entries "." and ".." count.
bool folderHasEntry(const std::string& folder);

// The names in a folder except "." and "..", in the order of the file system. Empty if it cannot be
// read.
std::vector<std::string> folderEntries(const std::string& folder);

// Whether path names a folder. Follows links.
bool folderExists(const std::string& path);

// Returns false if the folder cannot be made or already exists.
bool createFolder(const std::string& folder);

}  // namespace platform
