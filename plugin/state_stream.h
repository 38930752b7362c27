// A saved state in a host's stream, which may move fewer bytes than it is asked to.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "state/saved_state.h"

namespace plugin {

// `read(buffer, size)` answers how many bytes it has read, 0 or less at the end. Nothing when the
// stream holds no state.
template <typename Read>
std::optional<state::SavedState> readState(Read read) {
    std::string bytes;
    char piece[4096];
    while (bytes.size() <= static_cast<std::size_t>(state::kLongestState)) {
        const std::int64_t count = read(piece, static_cast<int>(sizeof piece));
        if (count <= 0 || count > static_cast<std::int64_t>(sizeof piece)) {
            return state::readSavedState(bytes);
        }
        bytes.append(piece, static_cast<std::size_t>(count));
    }
    return std::nullopt;  // longer than any
}

// `write(bytes, size)` answers how many bytes it has written. False when the stream takes no more.
template <typename Write>
bool writeState(const state::SavedState& saved, Write write) {
    std::string bytes = state::bytesOf(saved);
    for (std::size_t written = 0; written < bytes.size();) {
        const int left = static_cast<int>(bytes.size() - written);
        const std::int64_t count = write(bytes.data() + written, left);
        if (count <= 0 || count > left) return false;
        written += static_cast<std::size_t>(count);
    }
    return true;
}

}  // namespace plugin
