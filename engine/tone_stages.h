// The mono tone path: section formants and mix, bow noise, breath, shelves, low cut, top cut,
// output filter.
#pragma once

#include "dsp/bow_noise.h"
#include "dsp/one_pole.h"
#include "dsp/output_filter.h"
#include "dsp/shelf_tone.h"
#include "dsp/state_variable_filter.h"
#include "engine/bass_voice.h"
#include "engine/sections.h"
#include "engine/upper_voices.h"

namespace engine {

class ToneStages {
  public:
    ToneStages();

    void setRate(double sampleRate);
    // What is derived anew from the rate at the start of each block.
    void beginBlock();

    // `control` 0..1 as the parameter is stored, `smoothed` the value that walks towards it.
    void setHighPass(float control, float smoothed);
    void setBrightness(float control);

    // Formant filters of "Brass" and "Horn" forget their state.
    void clearFormants();
    // All states but the shelf's, which a rate change clears.
    void clear();
    void clearShelf() { shelf_.clear(); }

    // A segment, in this order: the sections mixed and scaled by `gains`; the bow's noise and
    // breath; then shelves, low cut, the bass, top cut and output filter.
    void renderSections(const SectionSums& sums, const Sections& sections, const Signal& gains,
                        int frames, Signal& mix);
    void addBowNoise(const Signal& sectionLevels, const Signal& dither, int frames, Signal& mix);
    void renderTone(const BassRows& bass, const Signal& dither, int frames, Signal& mix);

  private:
    void renderSteadyTone(const BassRows& bass, const Signal& dither, int from, int until,
                          Signal& mix);

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
    dsp::OutputFilter output_;
};

}  // namespace engine
