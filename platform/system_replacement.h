// The system's own way to put a file in another's place: one definition per system, called by
// writeFile and updateFile alone.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "platform/file.h"

namespace platform {

// What is added to a path for the file that will take its place. There is one at a time: whoever
// holds it open has it to himself, and what a crash left there is taken over by the next writer.
constexpr const char* kReplacementEnding = ".writing";

// How long a writer waits for another one of the same file.
constexpr std::chrono::seconds kReplacementPatience{2};

// Asks for the contents once no other writer can come between; nothing leaves the file as it is.
using ContentsMaker = std::function<std::optional<std::string>()>;

// True: the contents are in place, also after a loss of power. False: the old file is.
bool replaceSystemFile(const std::string& path, Links links, const ContentsMaker& contents);

}  // namespace platform
