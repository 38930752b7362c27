// Converts paths between the system's 8-bit form and UTF-8, for display and storage.
#pragma once

#include <string>

namespace platform {

// The same text on Linux. On Windows, characters outside the code page become question marks.
std::string utf8FromPath(const std::string& path);
std::string pathFromUtf8(const std::string& text);

}  // namespace platform
