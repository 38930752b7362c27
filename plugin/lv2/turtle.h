// The bundle's Turtle files, which tell hosts all that they need to know before they load the
// library.
#pragma once

#include <string>
#include <vector>

#include "state/bank.h"

namespace lv2 {

// What the manual says of a factory sound.
struct SoundNote {
    int program = 0;
    std::string name;
    std::string family;
    std::string character;
};

// Reads the tables of docs/presets.md: "## FAMILY", and rows "| NUMBER | NAME | CHARACTER | ...".
std::vector<SoundNote> readSoundNotes(const std::string& markdown);

// Manifest, plug-in and presets. The defaults are the values of the bank's program 0.
std::string manifestTurtle(const std::vector<SoundNote>& sounds);
std::string pluginTurtle(const state::Bank& bank);
std::string presetsTurtle(const state::Bank& bank, const std::vector<SoundNote>& sounds);

}  // namespace lv2
