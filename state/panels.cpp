// The panels, from left to right.
#include "state/panels.h"

#include <algorithm>

namespace state {

const std::vector<Panel>& panels() {
    static const std::vector<Panel> all = {
        {"Keys and voice", {kKSplit, kWaveform, kConfigs, kMasterP, kVelocityAmp, kVlphs}},
        {"Sections", {kViolin, kViola, kBrass, kHorn, kCello, kContrabass}},
        {"Section switches", {kViolin2, kViola2, kBrass2, kHorn2, kCello2, kContrabass2}},
        {"Envelope", {kEnvAttack, kEnvDecay, kEnvSustain, kEnvRelease}},
        {"Tone", {kHP, kBrigthness}},
        {"Output", {kVolume, kPan}},
        {"Ensemble", {kChorus, kDepth_1, kDepth_6, kWide, kStereo, kDryAdd}},
        {"Phaser", {kPhaser, kRate, kAmnt, kStages, kWidth}},
        {"Spring reverb", {kReverb, kMix, kSize, kBrite, kSpring}},
    };
    return all;
}

const Panel& panelOf(int index) {
    return *std::find_if(panels().begin(), panels().end(), [index](const Panel& panel) {
        const auto& on = panel.parameters;
        return std::find(on.begin(), on.end(), index) != on.end();
    });
}

}  // namespace state
