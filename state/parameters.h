// The 42 parameters: index, name, default, and effect on the engine.
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
    kBrigthness,  // intentional: stored with this spelling
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

// Hidden: sets the polyphony, 0..1 for 6..44 voices. It has no name and no program stores it.
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

// Never throws. `index` must be a parameter.
const Parameter& parameter(int index);

// Limits the value to 0..1; NaN becomes 0.
float engineValue(float value);

// The value with a decimal point and three decimals. Never longer than 7 characters.
std::string valueText(float value);

// Number of voices for a value of kVoiceCountParam.
int voiceCount(float value);

}  // namespace state
