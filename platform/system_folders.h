// What the system itself says about the two folders.
#pragma once

#include <optional>
#include <string>

namespace platform {

// Full path of the library or program that this code is linked into, or empty.
std::string systemModulePath();
std::optional<std::string> systemApplicationDataFolder();

}  // namespace platform
