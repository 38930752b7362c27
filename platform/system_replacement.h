// Replaces a file through the system. One definition per system; only writeFile and updateFile call
// it.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "platform/file.h"

namespace platform {

// Suffix of the temporary file that replaces the file at a path. There is one per path: opening it
// gives exclusive access, and the next writer takes over what a crash left there.
constexpr const char* kReplacementEnding = ".writing";

// How long a writer waits for another writer of the same file.
constexpr std::chrono::seconds kReplacementPatience{2};

// Called for the contents once no other writer can intervene. If it returns nothing, the file stays
// as it is.
using ContentsMaker = std::function<std::optional<std::string>()>;

// Returns true once the contents are in place, even after a loss of power; false if the old file
// stays.
bool replaceSystemFile(const std::string& path, Links links, const ContentsMaker& contents);

}  // namespace platform
