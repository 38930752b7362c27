// The mono tone path: section formants and mix, bow noise, breath, shelves, low cut, top cut,
// output filter.
#pragma once

#include <algorithm>

#include "dsp/bow_noise.h"
#include "dsp/one_pole.h"
#include "dsp/output_filter.h"
#include "dsp/shelf_tone.h"
#include "dsp/state_variable_filter.h"
#include "engine/sections.h"
#include "tests/reference/upper_voices.h"

namespace reference {

class ToneStages {
  public:
    ToneStages() {
        breath_.setShape(0.553f, 1.14f);
        // The corner is the rate / 7.35, or 6000 Hz at 44100 Hz.
        brightnessShelf_.setCoefficient(static_cast<float>(kTwoPi * 0.1360544235340355));
    }

    void setRate(double sampleRate) {
        sampleRate_ = sampleRate;
        shelf_.setSampleRate(static_cast<float>(sampleRate));
        // intentional: lasts for one sample when a program is pushed within a block
        breath_.setCoefficient(limitedCoefficient(28274.355 / sampleRate));
        output_.setRate(sampleRate, highPassControl_);
    }
    void beginBlock() {
        breath_.setCoefficient(limitedCoefficient(13194.699 / sampleRate_));
        const double topCut = sampleRate_ >= 88200.0 ? 35437.1916 : 40526.5755;
        topCut_.setCoefficient(limitedCoefficient(topCut / sampleRate_));
    }
    void setHighPass(float control, float smoothed) {
        highPassControl_ = control;
        output_.setHighPass(smoothed, sampleRate_);
        lowCut_.setCoefficient(
            static_cast<float>(kTwoPi / sampleRate_ * (smoothed * 615.0 + 20.0)));
    }
    void setBrightness(float control) {
        brightness_ = control;
        shelf_.setControl(control);
    }

    void clearFormants() {
        brass_.clear();
        horn_.clear();
    }
    // All but the shelf, which a rate change clears.
    void clear() {
        clearFormants();
        breath_.clear();
        lowCut_.clear();
        brightnessShelf_.clear();
        topCut_.clear();
        output_.clear();
    }
    void clearShelf() { shelf_.clear(); }

    // Call these once per sample, in this order.
    void advanceNoise() { noiseIndex_ = noiseIndex_ + 1 < bowNoise_.size() ? noiseIndex_ + 1 : 0; }
    float mixSections(const SectionSums& sums, const engine::Sections& sections) {
        using namespace engine;
        float mix = 0.0f;
        const float bus = sums.brassHorn;
        if (sections.on[kBrass]) {
            mix += (bus * 0.15f + brass_.processBandPass(bus) * 0.684f) * sections.level[kBrass];
        }
        if (sections.on[kHorn]) {
            mix += (horn_.processBandPass(bus) * 0.432f + bus * 0.15f) * sections.level[kHorn];
        }
        if (sections.on[kViolin]) mix += sums.violin * sections.level[kViolin];
        if (sections.on[kViola]) mix += sums.viola * sections.level[kViola];
        return mix;
    }
    float addBowNoise(float mix, float sectionLevel, float dither) {
        const float noise = (sectionLevel * 0.04f + dither) * bowNoise_[noiseIndex_];
        mix += noise;
        if (highPassControl_ < 0.01f) mix += 0.5f * breath_.process(mix);
        // The noise also moves the breath filter's corner for the next sample.
        breath_.setCoefficient(limitedCoefficient(kTwoPi / sampleRate_ * (noise + 1.0) * 2100.0));
        return mix;
    }
    float shape(float mix) {
        float shelved[2];
        shelf_.process(mix, shelved);
        float x = shelved[0];
        x -= lowCut_.tickLowPass(x);
        brightnessShelf_.tickLowPass(x);
        x = (x - brightnessShelf_.state() - dsp::kSmallestNormal) * 2.0f * brightness_ + x;
        return x * 0.5f;
    }
    float finish(float mix, float dither) {
        return static_cast<float>(output_.tick(topCut_.tickLowPass(mix) + dither));
    }

  private:
    static constexpr double kTwoPi = 6.28319;
    static float limitedCoefficient(double c) {
        return std::clamp(static_cast<float>(c), 0.03f, 0.998f);
    }

    double sampleRate_ = 44100.0;
    float highPassControl_ = 0.0f;
    float brightness_ = 0.0f;
    dsp::StateVariableFilter brass_;
    dsp::StateVariableFilter horn_;
    const dsp::BowNoiseTable& bowNoise_ = dsp::bowNoise();
    std::size_t noiseIndex_ = 0;
    dsp::StateVariableFilter breath_;
    dsp::ShelfTone shelf_;
    dsp::OnePole lowCut_;
    dsp::OnePole brightnessShelf_;
    dsp::OnePole topCut_;
    dsp::OutputFilter output_;
};

}  // namespace reference
