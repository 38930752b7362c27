// Files and folders, the same way on every system. Paths are UTF-8 with '/' on Linux, 8-bit with
// '\' on Windows.
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

// What becomes of a link in the place of a file.
enum class Links { kFollow, kRefuse };

// The whole of a regular file. Nothing when it is missing, unreadable, not a regular file (a pipe
// or a folder would block or never end) or longer than maxBytes.
std::optional<std::string> readFile(const std::string& path, std::size_t maxBytes,
                                    Links links = Links::kFollow);
// The same, but only the first `bytes` of a longer one.
std::optional<std::string> readFileStart(const std::string& path, std::size_t bytes,
                                         Links links = Links::kFollow);

// Puts `contents` in place of the file, or creates it, so that any moment shows the old file or the
// new one, whole, and so does a loss of power. A link stays and what it leads to is replaced; the
// permissions stay. False leaves the old one: also when it is write-protected, no regular file, or
// was being written by others for too long.
bool writeFile(const std::string& path, const std::string& contents);

// The same with contents made from the present ones (nothing: there is no file), which no other
// updateFile or writeFile changes meanwhile. False also when the file is there but cannot be read.
using FileEdit = std::function<std::string(const std::optional<std::string>& present)>;
bool updateFile(const std::string& path, std::size_t maxBytes, const FileEdit& edit,
                Links links = Links::kFollow);

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
