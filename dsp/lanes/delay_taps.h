// Read positions of a delay line whose delay moves, for a run of frames.
#pragma once

namespace dsp {

// All rows have room for whole vectors: up to 7 frames more.
struct DelayTaps {
    const float* delays;  // samples
    int write;            // index written at the first frame
    int size;             // of the ring, at least a run's frames
    int frames;
    // Of each frame: the two neighbours read, and the share of the second.
    int* index;
    int* next;
    float* fraction;
};

}  // namespace dsp
