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
    // What is derived anew from the rate at the start of each block.
    void beginBlock();

    // `control` 0..1 as the parameter is stored, `smoothed` the value that walks towards it.
    void setHighPass(float control, float smoothed);
    void setBrightness(float control);

    // Turns the bow noise one step on, at the head of every awake sample.
    void advanceNoise() { noiseIndex_ = noiseIndex_ + 1 < bowNoise_.size() ? noiseIndex_ + 1 : 0; }

    // Formant filters of "Brass" and "Horn" forget their state.
    void clearFormants();
    // All states but the shelf's, which a rate change clears.
    void clear();
    void clearShelf() { shelf_.clear(); }

    // One sample, in this order.
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
