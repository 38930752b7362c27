// Stereo reverb: eight parallel combs and four allpasses in series a channel.
#pragma once

#include <array>
#include <cstdint>

#include "dsp/reverb_lines.h"

namespace dsp {

// Audio thread only. A large object (125 kB); nothing allocates. The setters
// store a level, limited to the range given (a non-finite value is ignored); `update` puts them
// into force.
class ReverbModel {
  public:
    static constexpr int kCombs = ReverbCombs::kPerSide;
    static constexpr int kAllpasses = 4;
    static constexpr int kCapacity = 4000;  // samples that a length may have

    struct ChannelLengths {
        std::array<int, kCombs> combs;
        std::array<int, kAllpasses> allpasses;
    };
    struct Lengths {
        ChannelLengths left;
        ChannelLengths right;
    };

    ReverbModel();

    // Computes the lengths (samples) that suit the rate and, when asked, mutes. The running
    // lines keep their lengths for 44100 Hz: part of the sound. A rate that is not usable leaves
    // the lengths as they are.
    void setLengths(bool clear, float sampleRate);
    const Lengths& lengths() const { return lengths_; }

    void setRoomSize(float feedback);  // 0..1: feedback of the combs
    void setDamp(float damp);          // 0..1
    void setWet(float level);
    void setDry(float level);
    void setWidth(float width);  // 0..1
    void setMode(float mode);    // 0.5 and more: freeze, the tail holds and nothing enters
    void update();

    void mute();   // empties the lines, but not in freeze; the combs' filters keep their state
    void clear();  // all states, in freeze too; settings stay

    // Both sides in place, any number of frames.
    void render(float* left, float* right, int frames);

    // Consecutive quiet frames so far: left output within 0.0001, input within 0.1.
    std::int32_t silentFrames() const { return silentFrames_; }

  private:
    void renderRun(float* left, float* right, int frames);
    void countSilence(const float* in, const float* out, int frames);

    bool isFrozen() const { return mode_ >= 0.5f; }

    float gain_ = 0.015f;
    float wet1_ = 0.0f;  // direct
    float wet2_ = 0.0f;  // cross
    float dry_ = 0.0f;
    std::int32_t silentFrames_ = 0;

    float roomSize_ = 0.84f;
    float damp_ = 0.32f;
    float wet_ = 1.0f;
    float width_ = 0.5f;
    float mode_ = 0.0f;
    Lengths lengths_{};

    ReverbCombs combs_;
    std::array<ReverbAllpass, kAllpasses> leftAllpasses_;
    std::array<ReverbAllpass, kAllpasses> rightAllpasses_;
};

}  // namespace dsp
