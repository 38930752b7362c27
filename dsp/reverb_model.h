// Stereo reverb: per channel, eight parallel combs and four allpasses in series.
#pragma once

#include <array>
#include <cstdint>

#include "dsp/reverb_lines.h"

namespace dsp {

// Audio thread only. A large object (125 kB) that never allocates. Setters limit their value to the
// range given and ignore non-finite ones; call update() to apply them.
class ReverbModel {
  public:
    static constexpr int kCombs = ReverbCombs::kPerSide;
    static constexpr int kAllpasses = 4;
    static constexpr int kCapacity = 4000;  // longest line, in samples

    struct ChannelLengths {
        std::array<int, kCombs> combs;
        std::array<int, kAllpasses> allpasses;
    };
    struct Lengths {
        ChannelLengths left;
        ChannelLengths right;
    };

    ReverbModel();

    // Computes the line lengths (samples) for the rate, and mutes if `clear` is set. An unusable
    // rate leaves the lengths alone. intentional: the running lines keep their lengths for
    // 44100 Hz.
    void setLengths(bool clear, float sampleRate);
    const Lengths& lengths() const { return lengths_; }

    void setRoomSize(float feedback);  // 0..1: feedback of the combs
    void setDamp(float damp);          // 0..1
    void setWet(float level);
    void setDry(float level);
    void setWidth(float width);  // 0..1
    void setMode(float mode);    // 0.5 and above freezes: the tail holds, nothing enters
    void update();

    void mute();   // empties the lines unless frozen; the combs' filters keep their state
    void clear();  // all states, even when frozen; settings stay

    // Up to kMostFrames; all rows need room for whole vectors. Then call feed once; see
    // ReverbCombs. Each step gets the same Run.
    struct Run {
        alignas(kVectorBytes) std::array<float, kMostFrames + kMostLanes> in;
        ReverbCombs::Run combs;
    };
    void render(Run& run, const float* left, const float* right, int frames, float* outLeft,
                float* outRight);
    void feed(Run& run, const BesideCombs& beside) {
        combs_.feed(run.combs, run.in.data(), beside);
    }

    // Consecutive frames with the left output within 0.0001 and the input within 0.1.
    std::int32_t silentFrames() const { return silentFrames_; }

  private:
    void countSilence(bool anyHeard, const float* in, const float* out, int frames);

    bool isFrozen() const { return mode_ >= 0.5f; }

    const Kernels& kernels_ = kernels();
    float gain_ = 0.015f;
    float wet1_ = 0.0f;  // own side
    float wet2_ = 0.0f;  // other side
    float dry_ = 0.0f;
    std::int32_t silentFrames_ = 0;

    float roomSize_ = 0.84f;
    float damp_ = 0.32f;
    float wet_ = 1.0f;
    float width_ = 0.5f;
    float mode_ = 0.0f;
    Lengths lengths_{};

    ReverbCombs combs_;
    std::array<ReverbAllpass, 2 * kAllpasses> allpasses_;  // left, right
};

}  // namespace dsp
