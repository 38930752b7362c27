// Bank and preset files (.fxb, .fxp): the two published forms of each, as values and as bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace state {

// The instrument a file must belong to. A file with another ID or a larger count is refused.
struct FxOwner {
    uint32_t id;  // four characters, the first in the most significant byte
    int programs;
    int parameters;
};

// Opaque bytes that only the instrument understands.
using FxChunk = std::string;

struct FxProgram {
    std::string name;
    std::vector<float> values;  // finite
};

struct FxBank {
    static constexpr int kNoProgram = -1;

    int version;         // of the instrument
    int programs;        // stated count; the length of a list
    int currentProgram;  // kNoProgram if the file does not say
    std::variant<FxChunk, std::vector<FxProgram>> content;
};

struct FxPreset {
    int version;  // of the instrument
    int parameters;
    std::string name;
    std::variant<FxChunk, std::vector<float>> content;
};

// Strict: every size and count must be right, and nothing may follow. Errors call the file file.
// Both throw platform::InputError.
FxBank parseFxBank(std::string_view bytes, const FxOwner& owner, const std::string& file);
FxPreset parseFxPreset(std::string_view bytes, const FxOwner& owner, const std::string& file);

// Names are cut to 27 bytes.
std::string fxBytes(const FxBank& bank, uint32_t id);
std::string fxBytes(const FxPreset& preset, uint32_t id);

}  // namespace state
