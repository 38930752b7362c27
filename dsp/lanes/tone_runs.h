// What the kernels of the tone path and of the phaser are asked for.
#pragma once

#include "dsp/biquad.h"
#include "dsp/one_pole.h"
#include "dsp/output_filter.h"
#include "dsp/section_filters.h"
#include "dsp/shelf_tone.h"
#include "dsp/stereo_phaser.h"

namespace dsp {

// The mono tone path behind the mix, in place.
struct ToneRun {
    ShelfTone::Filter& shelf;
    OnePole& lowCut;
    OnePole& brightnessShelf;
    OnePole& topCut;
    OutputFilter& output;
    float brightness;
    const SectionFloat* bass;  // the first two lanes are added before the top cut
    const float* dither;       // added behind it
    float* mix;
    int frames;
};

// The phaser between its filters, both sides in place, while the sweep stays the same.
struct PhaserRun {
    StereoPhaserPreFilter* inputFilter;  // null: none
    StereoPhaser& phaser;
    StereoOutputFilter& output;
    float* left;
    float* right;
    int frames;
};

}  // namespace dsp
