// What a song keeps of the instrument in formats whose hosts save it whole.
#pragma once

#include <optional>
#include <string>

namespace state {

struct SavedState {
    int program = 0;
    bool bypassed = false;
    std::string bank;  // the bytes of a BankChunk
};

// "QZS1", the program (u32 LE), the bank; and 1 (u32 LE) when bypassed.
std::string bytesOf(const SavedState& saved);

// The same back, or the instrument's VST 2 state as hosts wrap it when they put this format in its
// place: a bank file, alone or after their own header, or the bare bank chunk. Nothing when the
// bytes are none of these.
std::optional<SavedState> readSavedState(const std::string& bytes);

// No state is longer.
constexpr int kLongestState = 1 << 16;

}  // namespace state
