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

enum class Unit { kNone, kPercent, kSeconds, kHertz, kSlowHertz, kDecibels, kCents, kDegrees };

// What a value stands for. VST 2 shows the value itself.
struct Law {
    enum Kind { kContinuous, kSwitch, kList, kSplitKey };

    Kind kind;
    Unit unit;  // of a continuous one
    // The quantity in its unit, or the position; never falls as the value rises.
    double (*plain)(float value);
    int positions = 0;                   // 0: continuous
    const char* const* names = nullptr;  // of the positions of a switch or list
};

struct Parameter {
    ParamIndex index;
    const char* name;   // stored, and VST 2's
    const char* title;  // as on the panel; no two are alike
    float defaultValue;
    const Law& law;
    // Hands the value (finite, 0..1) to the engine.
    void (*apply)(engine::SoundEngine& engine, float value);
};

// Never throws. `index` must be a parameter.
const Parameter& parameter(int index);

// Limits the value to 0..1; NaN becomes 0.
float engineValue(float value);

// The value with a decimal point and three decimals. Never longer than 7 characters.
std::string valueText(float value);

// The key that a position of "KSplit" stands for.
int splitKeyAt(int position);

// Number of voices for a value of kVoiceCountParam.
int voiceCount(float value);

}  // namespace state
