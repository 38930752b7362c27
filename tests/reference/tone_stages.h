// The mono tone path: section formants and mix, bow noise, breath, shelves, low cut, top cut,
// output filter.
#pragma once

#include "dsp/bow_noise.h"
#include "dsp/one_pole.h"
#include "tests/reference/output_filter.h"
#include "dsp/shelf_tone.h"
#include "dsp/state_variable_filter.h"
#include "engine/sections.h"
#include "tests/reference/upper_voices.h"
#include "tests/reference/names.h"

namespace reference {

class ToneStages {
  public:
    ToneStages();

    void setRate(double sampleRate);
    // Recomputes the coefficients that each block starts with.
    void beginBlock();

    // `control` is the stored parameter (0..1); `smoothed` moves halfway to it with each setting.
    void setHighPass(float control, float smoothed);
    void setBrightness(float control);

    // Advances the bow noise. Call it first for every awake sample.
    void advanceNoise() { noiseIndex_ = noiseIndex_ + 1 < bowNoise_.size() ? noiseIndex_ + 1 : 0; }

    // Clears the formant filters of "Brass" and "Horn".
    void clearFormants();
    // Clears all states except the shelf, which a rate change clears.
    void clear();
    void clearShelf() { shelf_.clear(); }

    // Call these once per sample, in this order.
    float mixSections(const SectionSums& sums, const Sections& sections);
    float addBowNoise(float mix, float sectionLevel, float dither);
    float shape(float mix);
    float finish(float mix, float dither);

  private:
    double sampleRate_ = 44100.0;
    float highPassControl_ = 0.0f;
    float brightness_ = 0.0f;
    dsp::StateVariableFilter brass_;
    dsp::StateVariableFilter horn_;
    const dsp::BowNoiseTable& bowNoise_;
    std::size_t noiseIndex_ = 0;
    dsp::StateVariableFilter breath_;
    dsp::ShelfTone shelf_;
    dsp::OnePole lowCut_;
    dsp::OnePole brightnessShelf_;
    dsp::OnePole topCut_;
    OutputFilter output_;
};

}  // namespace reference
