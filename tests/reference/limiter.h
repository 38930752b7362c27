// Peak limiter of the stereo output: follows the mid level and holds it near -1 dB.
#pragma once

namespace reference {

class PeakLimiter {
  public:
    // Applies the limiter's gain and the fixed make-up of x 4 to both sides, in place.
    void process(float& left, float& right);

    // |left + right| / 2 of the last input frame.
    float level() const { return level_; }
    // Smoothed peak of the level. Rises and falls by fixed shares a sample, whatever the rate.
    double follower() const { return follower_; }

    void clear() {
        follower_ = 0.0;
        level_ = 0.0f;
    }

  private:
    double follower_ = 0.0;
    float level_ = 0.0f;
};

}  // namespace reference
