// Bank and preset files (.fxb, .fxp): the two published forms of each, as values and as bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace host {

// Whom a file is for. A file that names another ID, or counts more than this, is refused.
struct FxOwner {
    uint32_t id;  // four characters, the first in the most significant byte
    int programs;
    int parameters;
};

// Bytes that only the instrument understands.
using FxChunk = std::string;

struct FxProgram {
    std::string name;
    std::vector<float> values;  // finite
};

struct FxBank {
    static constexpr int kNoProgram = -1;

    int version;         // of the instrument
    int programs;        // as counted; a list has so many
    int currentProgram;  // kNoProgram when the file does not say
    std::variant<FxChunk, std::vector<FxProgram>> content;
};

struct FxPreset {
    int version;  // of the instrument
    int parameters;
    std::string name;
    std::variant<FxChunk, std::vector<float>> content;
};

// Strict: every size and count must hold, and nothing may follow. file is what an error calls the
// file. Both throw Error.
FxBank parseFxBank(std::string_view bytes, const FxOwner& owner, const std::string& file);
FxPreset parseFxPreset(std::string_view bytes, const FxOwner& owner, const std::string& file);

// Names are cut to 27 bytes.
std::string fxBytes(const FxBank& bank, uint32_t id);
std::string fxBytes(const FxPreset& preset, uint32_t id);

}  // namespace host
