// Reading files of a bounded size, the same way on every system.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace platform {

// The whole of a regular file. Nothing when it is missing, unreadable, not a regular file (a pipe
// or a folder would block or never end) or longer than maxBytes.
std::optional<std::string> readFile(const std::string& path, std::size_t maxBytes);

// Whether path names a regular file, links followed.
bool fileExists(const std::string& path);

}  // namespace platform
