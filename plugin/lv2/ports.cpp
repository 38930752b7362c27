// Symbols, and the way from values to ports and back.
#include "plugin/lv2/ports.h"

#include <cmath>
#include <iterator>

#include "state/parameter_text.h"

namespace lv2 {

namespace {

constexpr double kSameValue = 1e-6;

// By parameter.
constexpr const char* kSymbols[] = {
    "volume",       "pan",       "tune",        "velocity",      "high_pass",     "brightness",
    "waveform",     "attack",    "decay",       "sustain",       "release",       "viola",
    "violin",       "brass",     "horn",        "contrabass",    "cello",         "viola_on",
    "violin_on",    "brass_on",  "horn_on",     "contrabass_on", "cello_on",      "key_split",
    "violin_phase", "configs",   "ensemble_on", "depth_1",       "depth_6",       "wide",
    "stereo",       "dry_add",   "phaser_on",   "phaser_rate",   "phaser_amount", "phaser_stages",
    "phaser_width", "reverb_on", "reverb_mix",  "reverb_size",   "reverb_brite",  "spring",
};
static_assert(std::size(kSymbols) == state::kNumParams);

double unitsOf(int index) {
    return portUnitsPer(state::parameter(index).law.unit);
}

}  // namespace

const char* portSymbol(int index) {
    return kSymbols[index];
}

float portValue(int index, float value) {
    return static_cast<float>(state::plainValue(index, value) * unitsOf(index));
}

float valueAtPort(int index, float port) {
    const float value = state::valueFromPlain(index, port / unitsOf(index));
    if (state::parameter(index).law.positions > 0) return value;
    // Many values share a port where it is the coarser of the two.
    const auto decimal = static_cast<float>(std::round(value * 1000.0) / 1000.0);
    return portValue(index, decimal) == port ? decimal : value;
}

bool standsAt(int index, float port, float value) {
    if (portValue(index, value) == port) return true;
    const float wanted = valueAtPort(index, port);
    if (state::parameter(index).law.positions > 0) {
        return state::plainValue(index, wanted) == state::plainValue(index, value);
    }
    return std::abs(double{wanted} - state::engineValue(value)) <= kSameValue;
}

}  // namespace lv2
