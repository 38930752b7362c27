// Arguments of placeTaps: read positions of a delay line whose delay changes every frame.
#pragma once

namespace dsp {

// All rows need room for whole vectors.
struct DelayTaps {
    const float* delays;  // samples
    int write;            // write index at the first frame
    int size;             // of the ring; at least `frames`
    int frames;
    // Per frame: the two samples to interpolate, and the weight of the second.
    int* index;
    int* next;
    float* fraction;
};

}  // namespace dsp
