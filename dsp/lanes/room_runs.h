// Arguments of the kernels of the room reverb. All rows need room for whole vectors.
#pragma once

namespace dsp {

// In the reverb's silence the input is within one of these, the left output within the other.
constexpr float kSilentInput = 0.1f;
constexpr float kSilentOutput = 0.0001f;

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

// The room but for the input of its combs: sums of the combs, allpasses, and the mix with the dry
// signal. No line is shorter than the run, so frames become lanes.
struct RoomRun {
    float* const* combs;      // delayed samples: eight rows of the left side, eight of the right
    float* const* allpasses;  // four and four; the next input replaces the delayed samples
    float inGain;
    float wet;    // own side
    float cross;  // other side
    float dry;
    const float* left;
    const float* right;
    float* in;  // receives the input of the combs
    float* outLeft;
    float* outRight;
    int frames;
};

// After the room: doubles and bounds both sides. `feedback` receives, one frame late and scaled by
// 0.9, what the room feeds back into the spring; its first frame is left alone.
struct RoomExit {
    const float* roomLeft;
    const float* roomRight;
    float* left;
    float* right;  // in: the right side before the room
    float* feedback;
    int frames;
};

}  // namespace dsp
