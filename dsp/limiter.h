// Peak limiter of the stereo output; holds the mid level near -1 dB.
#pragma once

#include <array>

#include "dsp/lanes/kernels.h"

namespace dsp {

// Per frame:
//
//     level     = |left + right| / 2
//     follower += (level - follower) x 0.2029          if level > follower
//     follower -= follower x 0.0109                    otherwise
//     gain      = 4                                    if follower < kLimiterThreshold
//     gain      = 4 x kLimiterHeld x follower^-0.99    otherwise
//
// The follower's shares are per sample, whatever the rate.
class PeakLimiter {
  public:
    // Limits one frame in place.
    void process(float& left, float& right);

    // Many frames, up to kMostFrames, in three steps: begin scales both sides, which need room for
    // whole vectors, by a gain before the limiter; then tick `follower` for each of `levels` in
    // place; finish writes the outputs and returns the number of frames that leave the follower
    // below `quiet`. The middle one can run beside other work that waits.
    struct Run {
        alignas(kVectorBytes) std::array<double, kMostFrames> levels;
        PeakFollower follower;
        bool plain;
    };
    void begin(Run& run, const LimiterGain& gain, float* left, float* right, int frames) const;
    int finish(Run& run, const float* left, const float* right, int frames, double quiet,
               float* outLeft, float* outRight);
    // Limits silence: the follower falls and the output is zero.
    void renderSilence(float* left, float* right, int frames);

    double follower() const { return follower_.value; }

    void clear() { follower_ = {}; }

  private:
    double followWithCare(float level);

    const Kernels& kernels_ = kernels();
    PeakFollower follower_;
};

}  // namespace dsp
