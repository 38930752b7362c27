// Converts paths between the system's 8-bit form and UTF-8, for display and storage.
#pragma once

#include <filesystem>
#include <string>

namespace platform {

// The same text on Linux. On Windows, characters outside the code page become question marks.
std::string utf8FromPath(const std::string& path);
std::string pathFromUtf8(const std::string& text);

// For the standard library, which understands 8-bit text otherwise than Windows does.
std::filesystem::path systemPath(const std::string& path);
std::string pathText(const std::filesystem::path& path);

}  // namespace platform
