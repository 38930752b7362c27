// The parameter table, and the mapping of each value to the engine.
#include "state/parameters.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "engine/voice_allocator.h"

namespace state {

namespace {

using Engine = engine::SoundEngine;

template <engine::Section section>
void applyLevel(Engine& engine, float v) {
    engine.setSectionLevel(section, v);
}

// Level of "Violin", "Contrabass" and "Cello", whose sources are louder.
template <engine::Section section>
void applyReducedLevel(Engine& engine, float v) {
    engine.setSectionLevel(section, v * 0.4f);
}

template <engine::Section section>
void applySwitch(Engine& engine, float v) {
    engine.setSectionSwitch(section, v);
}

void applyAttack(Engine& engine, float v) {
    const float root = v * v + 0.00005f;
    engine.setAttackTime(root * root * 10.0f);
}

void applyDecay(Engine& engine, float v) {
    const float root = v * v + 0.1f;
    engine.setDecayTime(root * root * 10.0f);
}

void applyRelease(Engine& engine, float v) {
    const float root = v * v + 0.005f;
    engine.setRelease({root * 2000.0 + 15.0});
}

void applyWaveform(Engine& engine, float v) {
    engine.setWaveform(static_cast<engine::Waveform>(static_cast<int>(v + v)));
}

// Split keys 36, 45, 48, 57, 60, 69, 72 and 81.
void applyKeySplit(Engine& engine, float v) {
    constexpr std::array<float, 8> kRatios = {3.0f / 11.0f,  5.25f / 11.0f, 6.0f / 11.0f,
                                              8.25f / 11.0f, 9.0f / 11.0f,  11.25f / 11.0f,
                                              12.0f / 11.0f, 14.25f / 11.0f};
    engine.setKeySplit(kRatios[static_cast<int>(v * 7.0f)]);
}

// The parameter is stored and shown, but has no effect.
void applyNothing(Engine&, float) {}

// clang-format off
#define SET(expression) [](Engine& e, float v) { expression; }
constexpr Parameter kParameters[] = {
    // index        name            default  effect on the engine
    { kVolume,      "Volume",       0.3f,    SET(e.setVolume(v)) },
    { kPan,         "Pan",          0.5f,    applyNothing },
    { kMasterP,     "MasterP",      0.5f,    SET(e.setPitchOffset(2.0f * v - 1.0f)) },
    { kVelocityAmp, "VelocityAmp",  0.0f,    SET(e.setVelocityAmount(v * 0.998f + 0.001f)) },
    { kHP,          "HP",           0.327f,  SET(e.setHighPass(v)) },
    { kBrigthness,  "Brigthness",   0.815f,  SET(e.setBrightness(v)) },
    { kWaveform,    "Waveform",     0.0f,    applyWaveform },
    { kEnvAttack,   "Env-Attack",   0.5f,    applyAttack },
    { kEnvDecay,    "Env-Decay",    0.1f,    applyDecay },
    { kEnvSustain,  "Env-Sustain",  1.0f,    SET(e.setSustain(v)) },
    { kEnvRelease,  "Env-Release",  0.1f,    applyRelease },
    { kViola,       "Viola",        0.3f,    applyLevel<engine::kViola> },
    { kViolin,      "Violin",       0.0f,    applyReducedLevel<engine::kViolin> },
    { kBrass,       "Brass",        0.1f,    applyLevel<engine::kBrass> },
    { kHorn,        "Horn",         0.1f,    applyLevel<engine::kHorn> },
    { kContrabass,  "Contrabass",   0.426f,  applyReducedLevel<engine::kContrabass> },
    { kCello,       "Cello",        0.426f,  applyReducedLevel<engine::kCello> },
    { kViola2,      "Viola",        1.0f,    applySwitch<engine::kViola> },
    { kViolin2,     "Violin",       1.0f,    applySwitch<engine::kViolin> },
    { kBrass2,      "Brass",        1.0f,    applySwitch<engine::kBrass> },
    { kHorn2,       "Horn",         1.0f,    applySwitch<engine::kHorn> },
    { kContrabass2, "Contrabass",   0.0f,    applySwitch<engine::kContrabass> },
    { kCello2,      "Cello",        0.0f,    applySwitch<engine::kCello> },
    { kKSplit,      "KSplit",       0.5f,    applyKeySplit },
    { kVlphs,       "Vlphs",        0.0f,    SET(e.setViolinPhase(v * 0.5f)) },
    { kConfigs,     "Configs",      1.0f,    SET(e.setSharedEnvelope(v)) },
    { kChorus,      "Chorus",       1.0f,    SET(e.chorus().setOn(engine::isOn(v))) },
    { kDepth_1,     "Depth_1",      0.612f,  SET(e.chorus().setSlowDepth(v)) },
    { kDepth_6,     "Depth_6",      0.234f,  SET(e.chorus().setFastDepth(v)) },
    { kWide,        "Wide",         0.524f,  SET(e.chorus().setWide(v + 1.0f)) },
    { kStereo,      "Stereo",       0.792f,  SET(e.chorus().setStereo(v)) },
    { kDryAdd,      "DryAdd",       0.46f,   SET(e.chorus().setDryAdd(v)) },
    { kPhaser,      "Phaser",       0.0f,    SET(e.phaser().setOn(engine::isOn(v))) },
    { kRate,        "Rate",         0.298f,  SET(e.phaser().setRateControl(v)) },
    { kAmnt,        "Amnt",         0.164f,  SET(e.phaser().setFeedback(v)) },
    { kStages,      "Stages",       0.5f,    SET(e.phaser().setStages(v)) },
    { kWidth,       "Width",        0.98f,   SET(e.phaser().setDepthControl(v)) },
    { kReverb,      "Reverb",       0.0f,    SET(e.reverb().setOn(engine::isOn(v))) },
    { kMix,         "Mix",          0.864f,  SET(e.reverb().setMix(v)) },
    { kSize,        "Size",         0.164f,  SET(e.reverb().setSize(v)) },
    { kBrite,       "Brite",        0.236f,  SET(e.reverb().setBrite(v)) },
    { kSpring,      "Spring",       0.3f,    SET(e.reverb().setSpring(v)) },
};
#undef SET
// clang-format on

constexpr bool inIndexOrder() {
    for (int i = 0; i < kNumParams; ++i) {
        if (kParameters[i].index != i) return false;
    }
    return true;
}
static_assert(std::size(kParameters) == kNumParams && inIndexOrder());

}  // namespace

const Parameter& parameter(int index) {
    return kParameters[index];
}

float engineValue(float value) {
    return std::isnan(value) ? 0.0f : std::clamp(value, 0.0f, 1.0f);
}

std::string valueText(float value) {
    char text[8];
    const float shown = std::isfinite(value) ? std::clamp(value, -99.0f, 999.0f) : 0.0f;
    const auto end = std::to_chars(text, text + sizeof text, shown, std::chars_format::fixed, 3);
    return {text, end.ptr};
}

int voiceCount(float value) {
    return static_cast<int>(engineValue(value) * 38.0f + 0.5f) + engine::kMinVoices;
}

}  // namespace state
