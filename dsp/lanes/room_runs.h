// Arguments of the kernels around the room reverb. All rows need room for whole vectors.
#pragma once

namespace dsp {

// The spring before the room: its output joins both sides, the difference of which feeds it.
struct SpringEntry {
    const float* spring;  // output of its line
    float mix;
    float amount;
    float* left;
    float* right;
    float* side;
    int frames;
};

// Both sides of the room and the dry signal, in place.
struct RoomMix {
    const float* roomLeft;
    const float* roomRight;
    float wet;    // own side
    float cross;  // other side
    float dry;
    float* left;
    float* right;
    int frames;
};

// After the room, in place: doubles and bounds both sides. `feedback` receives, one frame late and
// scaled by 0.9, what the room feeds back into the spring; its first frame is left alone.
struct RoomExit {
    const float* busRight;  // the right side before the room
    float* left;
    float* right;
    float* feedback;
    int frames;
};

}  // namespace dsp
