// The mono tone path: section filters and mix, bow noise, breath, shelves, low cut, top cut, output
// filter.
#pragma once

#include <algorithm>
#include <array>

#include "dsp/bow_noise.h"
#include "dsp/lanes/tone_runs.h"
#include "dsp/one_pole.h"
#include "dsp/output_filter.h"
#include "dsp/random.h"
#include "dsp/shelf_tone.h"
#include "dsp/state_variable_filter.h"
#include "engine/bass_voice.h"
#include "engine/sections.h"
#include "engine/upper_voices.h"

namespace engine {

// Inputs of the tone path for one segment.
struct ToneSources {
    const SectionSums& voices;
    const BassRows& bass;
    // Of the mix of the upper sections: the gain is scale x gains, at most 1.
    const Signal& gains;
    float gainScale;
    const Signal& sectionLevels;  // scale the bow noise
    dsp::Random& random;          // one draw per frame
};

class ToneStages {
  public:
    ToneStages();

    void setRate(double sampleRate);
    // Recomputes the coefficients that each block starts with.
    void beginBlock();

    // `control` is the stored parameter (0..1); `smoothed` moves halfway to it with each setting.
    void setHighPass(float control, float smoothed);
    void setBrightness(float control);

    // Clears the formant filters of "Brass" and "Horn".
    void clearFormants() { sectionFilters_.clearFormants(); }
    // Clears all states except the shelf, which a rate change clears.
    void clear();
    void clearShelf() { shelf_.clear(); }

    // Renders one segment: mix of the sections, bow noise, breath; then shelf, low cut, brightness
    // shelf, basses, top cut, output filter.
    void render(const ToneSources& sources, const Sections& sections, int frames, Signal& mix) {
        begin(sources, sections, frames, mix);
        finish({0, frames}, mix);
    }
    // The same in two steps, of which the second can render the segment part by part. It hands its
    // runs, in each of which the shelf keeps its step, to `runTone(const dsp::ToneRun&, int from)`.
    void begin(const ToneSources& sources, const Sections& sections, int frames, Signal& mix);
    template <typename RunTone>
    void finish(SegmentPart part, Signal& mix, const RunTone& runTone) {
        const int end = part.from + part.frames;
        for (int from = part.from; from < end;) {
            const int count = std::min(end - from, shelf_.steadySamples());
            dsp::ShelfTone::Filter shelf = shelf_.filter();
            runTone(dsp::ToneRun{shelf, lowCut_, brightnessShelf_, topCut_, output_, brightness_,
                                 &bass_[from], &dither_[from], &mix[from], count},
                    from);
            shelf_.advance(shelf, count);
            from += count;
        }
    }
    void finish(SegmentPart part, Signal& mix) {
        finish(part, mix, [this](const dsp::ToneRun& run, int) { kernels_.runTone(run); });
    }

  private:
    // Runs the section filters over frames that all have, or all lack, a sounding bass.
    void filterSections(const ToneSources& sources, const Sections& sections, bool bassSounds,
                        int from, int until);
    void mixSections(const ToneSources& sources, const Sections& sections, int frames, Signal& mix);
    // The next samples of the bow noise, in a row with room for whole vectors.
    const float* nextNoise(int frames);
    void breathe(int frames, Signal& mix);

    const dsp::Kernels& kernels_ = dsp::kernels();
    double sampleRate_ = 44100.0;
    float highPassControl_ = 0.0f;
    float brightness_ = 0.0f;
    dsp::SectionFilters sectionFilters_;
    const dsp::BowNoiseTable& bowNoise_;
    std::size_t noiseIndex_ = 0;
    // Signals of the current segment; the basses in the first two lanes.
    std::array<dsp::SectionFloat, kLongestSegment> bass_{};
    Signal dither_{};
    Signal noise_{};
    Signal brassBand_{};
    Signal hornBand_{};
    int zerosFrom_ = 0;  // from this frame on, bass_ and both bands hold zeros
    dsp::StateVariableFilter breath_;
    dsp::ShelfTone shelf_;
    dsp::OnePole lowCut_;
    dsp::OnePole brightnessShelf_;
    dsp::OnePole topCut_;
    dsp::OutputFilter output_;
};

}  // namespace engine
