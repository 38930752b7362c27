// The mono tone path: section filters and mix, bow noise, breath, shelves, low cut, top cut, output
// filter.
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

// What the tone path takes in over a segment.
struct ToneSources {
    const SectionSums& voices;
    const BassRows& bass;
    const Signal& gains;          // scale the mix of the upper sections
    const Signal& sectionLevels;  // scale the bow's noise
    const Signal& dither;
};

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
    void clearFormants() { sectionFilters_.clearFormants(); }
    // All states but the shelf's, which a rate change clears.
    void clear();
    void clearShelf() { shelf_.clear(); }

    // A segment, in this order: the sections mixed and scaled; the bow's noise and breath; then
    // shelves, low cut, the basses, top cut and output filter.
    void render(const ToneSources& sources, const Sections& sections, int frames, Signal& mix);

  private:
    // The basses over a segment, in the first two lanes.
    using BassSignal = std::array<dsp::SectionFloat, kLongestSegment>;
    // Runs the section filters over frames in which the bass sounds, or not.
    void filterSections(const ToneSources& sources, const Sections& sections, bool bassSounds,
                        int from, int until, BassSignal& bass);
    void mixSections(const ToneSources& sources, const Sections& sections, int frames, Signal& mix);
    void renderNoise(const ToneSources& sources, int frames);
    void breathe(int frames, Signal& mix);
    // What comes behind the breath, over frames in which the shelf stands.
    void shape(const BassSignal& bass, const Signal& dither, int from, int until, Signal& mix);

    const dsp::Kernels& kernels_ = dsp::kernels();
    double sampleRate_ = 44100.0;
    float highPassControl_ = 0.0f;
    float brightness_ = 0.0f;
    dsp::SectionFilters sectionFilters_;
    const dsp::BowNoiseTable& bowNoise_;
    std::size_t noiseIndex_ = 0;
    // Of the segment under way.
    Signal noise_{};
    Signal brassBand_{};
    Signal hornBand_{};
    dsp::StateVariableFilter breath_;
    dsp::ShelfTone shelf_;
    dsp::OnePole lowCut_;
    dsp::OnePole brightnessShelf_;
    dsp::OnePole topCut_;
    dsp::OutputFilter output_;
};

}  // namespace engine
