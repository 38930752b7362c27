// Arguments of placeTaps and readTaps: a delay line whose delay changes every frame.
#pragma once

namespace dsp {

// At and above this level the offset of a FractionalDelay does not change a float.
constexpr float kInsensitive = 1e-29f;

// All rows need room for whole vectors.
struct DelayTaps {
    const float* delays;  // samples
    float shortest;       // what fits at least
    int write;            // write index at the first frame
    int size;             // of the ring; at least `frames`
    int frames;
    // Per frame: the first of two samples to interpolate, and the weight of the second.
    int* index;
    float* fraction;
};

// kUnfit: some frame reads a sample that the run has yet to write or has already overwritten.
// kClose: any vector of frames reads from a few samples in a row, as readTaps requires.
enum class TapPlaces { kUnfit, kScattered, kClose };

}  // namespace dsp
