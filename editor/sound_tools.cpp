// What the editor offers for whole sounds: undo, comparing two versions, and chance.
#include "editor/sound_tools.h"

#include <algorithm>

namespace editor {

namespace {

constexpr float kVariation = 0.07f;

struct Panel {
    const char* name;
    std::vector<int> parameters;
};

const std::vector<Panel>& allPanels() {
    using namespace state;
    static const std::vector<Panel> panels = {
        {"Sections", {kViolin, kViola, kBrass, kHorn, kCello, kContrabass}},
        {"Envelope", {kEnvAttack, kEnvDecay, kEnvSustain, kEnvRelease}},
        {"Tone", {kHP, kBrigthness, kVlphs}},
        {"Ensemble", {kDepth_1, kDepth_6, kWide, kStereo, kDryAdd}},
        {"Phaser", {kRate, kAmnt, kStages, kWidth}},
        {"Spring reverb", {kMix, kSize, kBrite, kSpring}},
    };
    return panels;
}

}  // namespace

void SoundTools::followProgram() {
    if (program_ == host_.program()) return;
    program_ = host_.program();
    active_ = 0;
    other_.reset();
}

void SoundTools::compare() {
    followProgram();
    const Values here = valuesOf(host_);
    const Values there = other_.value_or(here);
    active_ = 1 - active_;
    other_ = here;
    history_.apply(there, showsB() ? "compare with B" : "compare with A");
}

void SoundTools::copyToOther() {
    followProgram();
    other_ = valuesOf(host_);
}

std::vector<std::string> SoundTools::panels() {
    std::vector<std::string> names;
    for (const Panel& panel : allPanels()) names.emplace_back(panel.name);
    return names;
}

float SoundTools::chance() {
    random_ = random_ * 1664525u + 1013904223u;
    return static_cast<float>(random_ >> 8) * (2.0f / (1 << 24)) - 1.0f;
}

void SoundTools::vary(int panel) {
    const Panel& chosen = allPanels()[panel];
    Values values = valuesOf(host_);
    for (const int parameter : chosen.parameters) {
        values[parameter] = std::clamp(values[parameter] + kVariation * chance(), 0.0f, 1.0f);
    }
    history_.apply(values, std::string("vary ") + chosen.name);
}

}  // namespace editor
