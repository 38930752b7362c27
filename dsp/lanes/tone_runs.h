// Arguments of the kernels of the tone path and the phaser.
#pragma once

#include "dsp/biquad.h"
#include "dsp/one_pole.h"
#include "dsp/output_filter.h"
#include "dsp/section_filters.h"
#include "dsp/shelf_tone.h"
#include "dsp/stereo_phaser.h"

namespace dsp {

// The mono tone path after the mix, in place.
struct ToneRun {
    ShelfTone::Filter& shelf;
    OnePole& lowCut;
    OnePole& brightnessShelf;
    OnePole& topCut;
    OutputFilter& output;
    float brightness;
    const SectionFloat* bass;  // its first two lanes are added before the top cut
    const float* dither;       // added after the top cut
    float* mix;
    int frames;
};

// The phaser between its filters, both sides in place. `frames` is at most the phaser's
// steadySamples().
struct PhaserRun {
    StereoPhaserPreFilter* inputFilter;  // null: none
    StereoPhaser& phaser;
    StereoOutputFilter& output;
    float* left;
    float* right;
    int frames;
};

}  // namespace dsp
