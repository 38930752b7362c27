// Files that other programs may have open, such as virus scanners.
#pragma once

#include <chrono>
#include <string>

#include <windows.h>

#include "platform/system_replacement.h"

namespace platform {

// Retries while somebody else has the file open, for which the system has two error codes.
template <typename Attempt>
bool tryPatiently(Attempt attempt, DWORD alsoBusy = ERROR_SHARING_VIOLATION) {
    constexpr DWORD kPauseMilliseconds = 2;
    const auto deadline = std::chrono::steady_clock::now() + kReplacementPatience;
    while (!attempt()) {
        const DWORD error = GetLastError();
        if (error != ERROR_SHARING_VIOLATION && error != alsoBusy) return false;
        if (std::chrono::steady_clock::now() >= deadline) return false;
        Sleep(kPauseMilliseconds);
    }
    return true;
}

// Renames the file while it is open, so that no other writer can intervene. It replaces the one at
// path, which is a full path.
bool renameOpenFile(HANDLE file, const std::string& path);

}  // namespace platform
