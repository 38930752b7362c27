// The 42 parameters: indices, names, defaults, and the mapping of each onto the engine.
#pragma once

#include <string>

#include "engine/sound_engine.h"

namespace state {

enum ParamIndex {
    kVolume,
    kPan,
    kMasterP,
    kVelocityAmp,
    kHP,
    kBrigthness,  // stored so
    kWaveform,
    kEnvAttack,
    kEnvDecay,
    kEnvSustain,
    kEnvRelease,
    kViola,
    kViolin,
    kBrass,
    kHorn,
    kContrabass,
    kCello,
    kViola2,
    kViolin2,
    kBrass2,
    kHorn2,
    kContrabass2,
    kCello2,
    kKSplit,
    kVlphs,
    kConfigs,
    kChorus,
    kDepth_1,
    kDepth_6,
    kWide,
    kStereo,
    kDryAdd,
    kPhaser,
    kRate,
    kAmnt,
    kStages,
    kWidth,
    kReverb,
    kMix,
    kSize,
    kBrite,
    kSpring,
    kNumParams
};

// Hidden: polyphony as 0..1 for 6..44 voices; no record, no name, in no program.
constexpr int kVoiceCountParam = 99999;

constexpr bool isParameter(int index) {
    return index >= 0 && index < kNumParams;
}

struct Parameter {
    ParamIndex index;
    const char* name;
    float defaultValue;
    // Hands the value (finite, 0..1) to the engine.
    void (*apply)(engine::SoundEngine& engine, float value);
};

// Throws nothing; `index` must be a parameter.
const Parameter& parameter(int index);

// 0 for a value that is not finite, else the value limited to 0..1.
float engineValue(float value);

// The value with three decimals and a point, in at most 7 characters whatever the value.
std::string valueText(float value);

// Voices for a value of kVoiceCountParam, limited to what the engine has.
int voiceCount(float value);

}  // namespace state
