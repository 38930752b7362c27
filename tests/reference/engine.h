// The literal engine: one sample at a time, one voice after the other, with the scalar blocks of
// dsp/. It shows that lanes, segments and their order change no bit of the sound.
//
// Comments marked "intentional" name oddities that saved sessions depend on.
#pragma once

#include <algorithm>
#include <cmath>

#include "engine/engine_controls.h"
#include "tests/reference/bass_voice.h"
#include "tests/reference/phaser_stage.h"
#include "tests/reference/spring_reverb.h"
#include "tests/reference/tone_stages.h"

namespace reference {

struct Stages {
    UpperVoices upper;
    BassVoice bass;
    ToneStages tone;
    EnsembleChorus chorus;
    PhaserStage phaser;
    SpringReverb reverb;
};

class Engine final : public engine::EngineControls<Stages> {
  public:
    explicit Engine(double sampleRate) : EngineControls(sampleRate) {}

    void beginBlock() override {
        beginStages();
        finite_ = true;
    }
    int render(float* left, float* right, int frames) override {
        for (int i = 0; i < frames; ++i) {
            const float random = static_cast<float>(random_.next());
            StereoSample out{0.0f, 0.0f};
            if (!asleep_) out = renderAwake(random);
            limiter_.process(out.left, out.right);
            if (limiter_.follower() < 1e-07) countSilence(1);
            left[i] = out.left;
            right[i] = out.right;
            finite_ = finite_ && std::isfinite(out.left) && std::isfinite(out.right);
        }
        return frames;
    }
    void endBlock(float* left, float* right, int frames) override {
        if (!finite_) {
            clearFault();
            std::fill_n(left, frames, 0.0f);
            std::fill_n(right, frames, 0.0f);
        }
    }
    // Nobody reads the taps of the literal engine.
    float chorusTap(int) const override { return 0.0f; }

  private:
    StereoSample renderAwake(float random) {
        bool sounding = false;
        const float mono = renderMono(random, sounding);
        // Passes a non-finite sample straight to endBlock, before a clamp can hide it.
        if (!std::isfinite(mono)) return {mono, mono};
        const StereoSample out =
            stages_.reverb.tick(stages_.phaser.tick(stages_.chorus.tick(mono)));
        // intentional: the volume does not scale the tails after the last voice
        const float gain = (sounding ? volume_ : 1.0f) * tickExpression();
        if (!sounding) countSilence(1);
        return {out.left * 4.0f * gain, out.right * 4.0f * gain};
    }
    float renderMono(float random, bool& sounding) {
        const float dither = random * 3.0517579e-15f - 5e-11f;
        stages_.tone.advanceNoise();
        phases_.advance(bendRatio_, sampleRate_);
        const SectionSums sums = stages_.upper.tick(phases_, bendRatio_, sections_, shared_);
        sounding = sums.sounding;
        float mix = stages_.tone.mixSections(sums, sections_);
        if (shared_) {
            if (sums.sounding) envelopeSum_ = stages_.upper.envelopeSum();
            const float gain = 2.5f / static_cast<float>(stages_.upper.polyphony()) * envelopeSum_;
            mix = gain < 1e-10f ? 0.0f : mix * std::min(gain, 1.0f);
        } else {
            mix *= 0.23f;
        }
        mix = stages_.tone.addBowNoise(mix, stages_.upper.tickSectionEnvelope(), dither);
        mix = stages_.tone.shape(mix);
        if (stages_.bass.sounding()) {
            sounding = true;
            stages_.bass.tick(phases_, sections_, mix);
        }
        return stages_.tone.finish(mix, dither);
    }

    MasterPhases phases_;
    bool finite_ = true;  // all samples of this block so far
};

}  // namespace reference
