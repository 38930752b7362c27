// The bundle's Turtle files, which tell hosts all that they need to know before they load the
// library.
#pragma once

#include <string>

#include "state/bank.h"

namespace lv2 {

// Manifest, plug-in and presets of the factory bank. The defaults are the values of its program 0.
// Throw std::runtime_error if a program is not the factory sound of its number.
std::string manifestTurtle(const state::Bank& bank);
std::string pluginTurtle(const state::Bank& bank);
std::string presetsTurtle(const state::Bank& bank);

}  // namespace lv2
