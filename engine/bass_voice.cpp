// Legato glide and operator signals of the bass voice.
#include "engine/bass_voice.h"

#include <algorithm>

#include "dsp/module_fm_op.h"

namespace engine {

namespace {
// The operators subtract it again, which rounds.
constexpr float kPhaseOffset = dsp::ModuleFMop::kPhaseOffset;
constexpr float kGain = 1.5f;
constexpr float kFadeStep = 0.01f;  // per sample
constexpr float kFadeFloor = 0.0001f;
}  // namespace

float BassVoice::tickFade() {
    if (glideIn_) {
        fade_ -= kFadeStep;
        if (fade_ <= kFadeFloor) {
            fade_ = kFadeFloor;
            glideIn_ = false;
        }
    } else {
        fade_ = std::min(fade_ + kFadeStep, 1.0f);
    }
    return fade_;
}

int BassVoice::renderAmplitude(int frames, Signal& amplitude) {
    dsp::VoiceEnvelope::Ramp ramp;
    int sounding = 0;
    if (envelope_.movesEvenly(frames, ramp)) {
        envelope_.render(amplitude.data(), frames);
        sounding = frames;
    }
    while (sounding < frames && envelope_.stage() != dsp::VoiceEnvelope::kIdle) {
        amplitude[sounding++] = envelope_.tick();
    }
    if (glideIn_ || fade_ < 1.0f) {
        for (int t = 0; t < sounding; ++t) amplitude[t] = amplitude[t] * kGain * tickFade();
    } else {
        for (int t = 0; t < sounding; ++t) amplitude[t] *= kGain;
    }
    return sounding;
}

void BassVoice::render(const PhaseRows& phases, const Sections& sections, int frames,
                       BassRows& rows) {
    rows.sounding = renderAmplitude(frames, rows.amplitude);
    rows.operators = &operators_;
    rows.on[kContrabassLane] = sections.on[kContrabass] ? -1 : 0;
    rows.on[kCelloLane] = sections.on[kCello] ? -1 : 0;
    const float* const turns = &phases.rounded[pitch_.semitone];
    const float octave = 0.5f * static_cast<float>(pitch_.octaveFactor);
    phaseRing_.replace(rows.sounding, [&](int t, float& delayed) {
        float* const lanes = &rows.phases[BassRows::at(t)];
        lanes[kContrabassLane] = delayed * 0.5f + kPhaseOffset - kPhaseOffset;
        lanes[kCelloLane] = delayed + kPhaseOffset - kPhaseOffset;
        delayed = turns[t * dsp::kPaddedPhases] * octave;
    });
}

}  // namespace engine
