// The parameter table, and the mapping of each value to the engine.
#include "state/parameters.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "dsp/output_filter.h"
#include "dsp/stereo_phaser.h"
#include "engine/voice_allocator.h"
#include "platform/number_text.h"

namespace state {

namespace {

using Engine = engine::SoundEngine;

constexpr float kSilentGain = 1e-6f;  // -120 dB

template <engine::Section section>
void applyLevel(Engine& engine, float v) {
    engine.setSectionLevel(section, v);
}

// Level of "Violin", "Contrabass" and "Cello", whose sources are louder.
constexpr float reduced(float v) {
    return v * 0.4f;
}

template <engine::Section section>
void applyReducedLevel(Engine& engine, float v) {
    engine.setSectionLevel(section, reduced(v));
}

template <engine::Section section>
void applySwitch(Engine& engine, float v) {
    engine.setSectionSwitch(section, v);
}

constexpr float semitones(float v) {
    return 2.0f * v - 1.0f;
}

constexpr float attackSeconds(float v) {
    const float root = v * v + 0.00005f;
    return root * root * 10.0f;
}

constexpr float decaySeconds(float v) {
    const float root = v * v + 0.1f;
    return root * root * 10.0f;
}

constexpr engine::ReleaseTime release(float v) {
    const float root = v * v + 0.005f;
    return {root * 2000.0 + 15.0};
}

constexpr int waveform(float v) {
    return static_cast<int>(v + v);
}

// The split keys: C, A above it, and so on up over four octaves.
constexpr std::array<float, 8> kSplitRatios = {3.0f / 11.0f,  5.25f / 11.0f, 6.0f / 11.0f,
                                               8.25f / 11.0f, 9.0f / 11.0f,  11.25f / 11.0f,
                                               12.0f / 11.0f, 14.25f / 11.0f};
constexpr int splitPosition(float v) {
    return static_cast<int>(v * 7.0f);
}

constexpr float violinPhaseTurns(float v) {
    return v * 0.5f;
}

constexpr float wide(float v) {
    return v + 1.0f;
}

double decibels(float gain) {
    return 20.0 * std::log10(static_cast<double>(std::max(gain, kSilentGain)));
}

// The parameter is stored and shown, but has no effect.
void applyNothing(Engine&, float) {}

constexpr const char* kOffOn[] = {"Off", "On"};
constexpr const char* kWaveforms[] = {"String", "Bowed", "Hollow"};
constexpr const char* kConfigurations[] = {"Poly", "Para"};

// clang-format off
#define PLAIN(expression) [](float v) -> double { return expression; }
constexpr Law kSwitch   = { Law::kSwitch,     Unit::kNone,      PLAIN(engine::isOn(v)), 2, kOffOn };
constexpr Law kConfig   = { Law::kList,       Unit::kNone,      PLAIN(engine::isOn(v)), 2, kConfigurations };
constexpr Law kWave     = { Law::kList,       Unit::kNone,      PLAIN(waveform(v)), 3, kWaveforms };
constexpr Law kSplit    = { Law::kSplitKey,   Unit::kNone,      PLAIN(splitPosition(v)), 8 };
constexpr Law kGain     = { Law::kContinuous, Unit::kDecibels,  PLAIN(decibels(v)) };
constexpr Law kReduced  = { Law::kContinuous, Unit::kDecibels,  PLAIN(decibels(reduced(v))) };
constexpr Law kShelf    = { Law::kContinuous, Unit::kDecibels,  PLAIN(24.0 * v - 12.0) };
constexpr Law kPercent  = { Law::kContinuous, Unit::kPercent,   PLAIN(100.0 * v) };
constexpr Law kCentre   = { Law::kContinuous, Unit::kPercent,   PLAIN(200.0 * v - 100.0) };
constexpr Law kTimes    = { Law::kContinuous, Unit::kPercent,   PLAIN(100.0 * wide(v)) };
constexpr Law kPitch    = { Law::kContinuous, Unit::kCents,     PLAIN(100.0 * semitones(v)) };
constexpr Law kCorner   = { Law::kContinuous, Unit::kHertz,     PLAIN(dsp::highPassHz(v)) };
constexpr Law kSweep    = { Law::kContinuous, Unit::kSlowHertz, PLAIN(dsp::phaserSweepHz(v)) };
constexpr Law kAttack   = { Law::kContinuous, Unit::kSeconds,   PLAIN(attackSeconds(v)) };
constexpr Law kDecay    = { Law::kContinuous, Unit::kSeconds,   PLAIN(decaySeconds(v)) };
constexpr Law kRelease  = { Law::kContinuous, Unit::kSeconds,   PLAIN(release(v).seconds()) };
constexpr Law kPhase    = { Law::kContinuous, Unit::kDegrees,   PLAIN(360.0 * violinPhaseTurns(v)) };
#undef PLAIN

#define SET(expression) [](Engine& e, float v) { expression; }
constexpr Parameter kParameters[] = {
    // index       stored name     title               default  law       effect on the engine
    { kVolume,      "Volume",       "Volume",           0.3f,    kGain,    SET(e.setVolume(v)) },
    { kPan,         "Pan",          "Pan",              0.5f,    kCentre,  applyNothing },
    { kMasterP,     "MasterP",      "Tune",             0.5f,    kPitch,   SET(e.setPitchOffset(semitones(v))) },
    { kVelocityAmp, "VelocityAmp",  "Velocity",         0.0f,    kPercent, SET(e.setVelocityAmount(v * 0.998f + 0.001f)) },
    { kHP,          "HP",           "High-pass",        0.327f,  kCorner,  SET(e.setHighPass(v)) },
    { kBrigthness,  "Brigthness",   "Brightness",       0.815f,  kShelf,   SET(e.setBrightness(v)) },
    { kWaveform,    "Waveform",     "Waveform",         0.0f,    kWave,    SET(e.setWaveform(static_cast<engine::Waveform>(waveform(v)))) },
    { kEnvAttack,   "Env-Attack",   "Attack",           0.5f,    kAttack,  SET(e.setAttackTime(attackSeconds(v))) },
    { kEnvDecay,    "Env-Decay",    "Decay",            0.1f,    kDecay,   SET(e.setDecayTime(decaySeconds(v))) },
    { kEnvSustain,  "Env-Sustain",  "Sustain",          1.0f,    kPercent, SET(e.setSustain(v)) },
    { kEnvRelease,  "Env-Release",  "Release",          0.1f,    kRelease, SET(e.setRelease(release(v))) },
    { kViola,       "Viola",        "Viola",            0.3f,    kGain,    applyLevel<engine::kViola> },
    { kViolin,      "Violin",       "Violin",           0.0f,    kReduced, applyReducedLevel<engine::kViolin> },
    { kBrass,       "Brass",        "Brass",            0.1f,    kGain,    applyLevel<engine::kBrass> },
    { kHorn,        "Horn",         "Horn",             0.1f,    kGain,    applyLevel<engine::kHorn> },
    { kContrabass,  "Contrabass",   "Contrabass",       0.426f,  kReduced, applyReducedLevel<engine::kContrabass> },
    { kCello,       "Cello",        "Cello",            0.426f,  kReduced, applyReducedLevel<engine::kCello> },
    { kViola2,      "Viola",        "Viola on/off",     1.0f,    kSwitch,  applySwitch<engine::kViola> },
    { kViolin2,     "Violin",       "Violin on/off",    1.0f,    kSwitch,  applySwitch<engine::kViolin> },
    { kBrass2,      "Brass",        "Brass on/off",     1.0f,    kSwitch,  applySwitch<engine::kBrass> },
    { kHorn2,       "Horn",         "Horn on/off",      1.0f,    kSwitch,  applySwitch<engine::kHorn> },
    { kContrabass2, "Contrabass",   "Contrabass on/off", 0.0f,    kSwitch,  applySwitch<engine::kContrabass> },
    { kCello2,      "Cello",        "Cello on/off",     0.0f,    kSwitch,  applySwitch<engine::kCello> },
    { kKSplit,      "KSplit",       "Key split",        0.5f,    kSplit,   SET(e.setKeySplit(kSplitRatios[splitPosition(v)])) },
    { kVlphs,       "Vlphs",        "Violin phase",     0.0f,    kPhase,   SET(e.setViolinPhase(violinPhaseTurns(v))) },
    { kConfigs,     "Configs",      "Configs",          1.0f,    kConfig,  SET(e.setSharedEnvelope(v)) },
    { kChorus,      "Chorus",       "Ensemble on/off",  1.0f,    kSwitch,  SET(e.chorus().setOn(engine::isOn(v))) },
    { kDepth_1,     "Depth_1",      "Depth 1",          0.612f,  kPercent, SET(e.chorus().setSlowDepth(v)) },
    { kDepth_6,     "Depth_6",      "Depth 6",          0.234f,  kPercent, SET(e.chorus().setFastDepth(v)) },
    { kWide,        "Wide",         "Wide",             0.524f,  kTimes,   SET(e.chorus().setWide(wide(v))) },
    { kStereo,      "Stereo",       "Stereo",           0.792f,  kPercent, SET(e.chorus().setStereo(v)) },
    { kDryAdd,      "DryAdd",       "Dry add",          0.46f,   kPercent, SET(e.chorus().setDryAdd(v)) },
    { kPhaser,      "Phaser",       "Phaser on/off",    0.0f,    kSwitch,  SET(e.phaser().setOn(engine::isOn(v))) },
    { kRate,        "Rate",         "Phaser rate",      0.298f,  kSweep,   SET(e.phaser().setRateControl(v)) },
    { kAmnt,        "Amnt",         "Phaser amount",    0.164f,  kPercent, SET(e.phaser().setFeedback(v)) },
    { kStages,      "Stages",       "Phaser stages",    0.5f,    kPercent, SET(e.phaser().setStages(v)) },
    { kWidth,       "Width",        "Phaser width",     0.98f,   kPercent, SET(e.phaser().setDepthControl(v)) },
    { kReverb,      "Reverb",       "Reverb on/off",    0.0f,    kSwitch,  SET(e.reverb().setOn(engine::isOn(v))) },
    { kMix,         "Mix",          "Reverb mix",       0.864f,  kPercent, SET(e.reverb().setMix(v)) },
    { kSize,        "Size",         "Reverb size",      0.164f,  kPercent, SET(e.reverb().setSize(v)) },
    { kBrite,       "Brite",        "Reverb brite",     0.236f,  kPercent, SET(e.reverb().setBrite(v)) },
    { kSpring,      "Spring",       "Spring",           0.3f,    kPercent, SET(e.reverb().setSpring(v)) },
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
    const float shown = std::isfinite(value) ? std::clamp(value, -99.0f, 999.0f) : 0.0f;
    return platform::fixedText(shown, 3);
}

int splitKeyAt(int position) {
    return engine::splitKey(kSplitRatios[position]);
}

int voiceCount(float value) {
    return static_cast<int>(engineValue(value) * 38.0f + 0.5f) + engine::kMinVoices;
}

}  // namespace state
