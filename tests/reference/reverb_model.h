// Stereo reverb: per channel, eight parallel combs and four allpasses in series.
#pragma once

#include <array>
#include <cstdint>

#include "tests/reference/reverb_lines.h"
#include "tests/reference/names.h"

namespace reference {

// Audio thread only. A large object (384 kB) that never allocates. Setters limit their value to the
// range given and ignore non-finite ones; call update() to apply them.
class ReverbModel {
  public:
    static constexpr int kCombs = 8;
    static constexpr int kAllpasses = 4;

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

    // Input and result are pairs, left first. The result is valid until the next call.
    const float* process(const float* in);

    // Consecutive frames with the left output within 0.0001 and the input within 0.1.
    std::int32_t silentFrames() const { return silentFrames_; }

  private:
    struct Channel {
        std::array<ReverbComb, kCombs> combs;
        std::array<ReverbAllpass, kAllpasses> allpasses;

        void setLengths(const ChannelLengths& lengths);
        void setLoop(float feedback, float damp);
        void mute();
        void clear();
        float tick(float x);
    };

    bool isFrozen() const { return mode_ >= 0.5f; }

    float gain_ = 0.015f;
    float wet1_ = 0.0f;  // own side
    float wet2_ = 0.0f;  // other side
    float dry_ = 0.0f;
    std::array<float, 2> out_{};
    std::int32_t silentFrames_ = 0;

    float roomSize_ = 0.84f;
    float damp_ = 0.32f;
    float wet_ = 1.0f;
    float width_ = 0.5f;
    float mode_ = 0.0f;
    Lengths lengths_{};

    Channel left_;
    Channel right_;
};

}  // namespace reference
