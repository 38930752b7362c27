// Peak limiter of the stereo output: follows the mid level and holds it near -1 dB.
#pragma once

#include "dsp/lanes/kernels.h"

namespace dsp {

class PeakLimiter {
  public:
    // Applies the limiter's gain and the fixed make-up of x 4 to both sides, in place.
    void process(float& left, float& right);

    // Frames in place, the same as one by one. Returns in how many the follower ends up below
    // `quiet`.
    int render(float* left, float* right, int frames, double quiet);
    // The same for frames of silence: the output is zero.
    void renderSilence(float* left, float* right, int frames);

    // |left + right| / 2 of the last input frame.
    float level() const { return level_; }
    // Smoothed peak of the level. Rises and falls by fixed shares a sample, whatever the rate.
    double follower() const { return follower_; }

    void clear() {
        follower_ = 0.0;
        level_ = 0.0f;
    }

  private:
    static constexpr int kRun = kMostFrames;

    static double followed(double follower, float level);
    static double followedWithCare(double follower, float level);
    int renderRun(float* left, float* right, int frames, double quiet);

    const Kernels& kernels_ = kernels();
    double follower_ = 0.0;
    float level_ = 0.0f;
};

}  // namespace dsp
