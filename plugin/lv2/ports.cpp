// Symbols and panels, and the way from values to ports and back.
#include "plugin/lv2/ports.h"

#include <cmath>
#include <iterator>

#include "state/parameter_text.h"

namespace lv2 {

namespace {

constexpr double kSameValue = 1e-6;

// By parameter.
constexpr ParameterPort kParameterPorts[] = {
    {"volume", Panel::kOutput},
    {"pan", Panel::kOutput},
    {"tune", Panel::kKeys},
    {"velocity", Panel::kKeys},
    {"high_pass", Panel::kTone},
    {"brightness", Panel::kTone},
    {"waveform", Panel::kKeys},
    {"attack", Panel::kEnvelope},
    {"decay", Panel::kEnvelope},
    {"sustain", Panel::kEnvelope},
    {"release", Panel::kEnvelope},
    {"viola", Panel::kSections},
    {"violin", Panel::kSections},
    {"brass", Panel::kSections},
    {"horn", Panel::kSections},
    {"contrabass", Panel::kSections},
    {"cello", Panel::kSections},
    {"viola_on", Panel::kSections},
    {"violin_on", Panel::kSections},
    {"brass_on", Panel::kSections},
    {"horn_on", Panel::kSections},
    {"contrabass_on", Panel::kSections},
    {"cello_on", Panel::kSections},
    {"key_split", Panel::kKeys},
    {"violin_phase", Panel::kKeys},
    {"configs", Panel::kKeys},
    {"ensemble_on", Panel::kEnsemble},
    {"depth_1", Panel::kEnsemble},
    {"depth_6", Panel::kEnsemble},
    {"wide", Panel::kEnsemble},
    {"stereo", Panel::kEnsemble},
    {"dry_add", Panel::kEnsemble},
    {"phaser_on", Panel::kPhaser},
    {"phaser_rate", Panel::kPhaser},
    {"phaser_amount", Panel::kPhaser},
    {"phaser_stages", Panel::kPhaser},
    {"phaser_width", Panel::kPhaser},
    {"reverb_on", Panel::kReverb},
    {"reverb_mix", Panel::kReverb},
    {"reverb_size", Panel::kReverb},
    {"reverb_brite", Panel::kReverb},
    {"spring", Panel::kReverb},
};
static_assert(std::size(kParameterPorts) == state::kNumParams);

double unitsOf(int index) {
    return portUnitsPer(state::parameter(index).law.unit);
}

}  // namespace

const ParameterPort& parameterPort(int index) {
    return kParameterPorts[index];
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
