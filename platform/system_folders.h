// The system's answers about the two folders. One definition per system.
#pragma once

#include <optional>
#include <string>

namespace platform {

// Full path of the library or program that contains this code, or empty.
std::string systemModulePath();
std::optional<std::string> systemApplicationDataFolder();

}  // namespace platform
