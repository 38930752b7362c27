// Peak limiter of the stereo output; holds the mid level near -1 dB.
#pragma once

namespace reference {

class PeakLimiter {
  public:
    // Limits one frame in place.
    void process(float& left, float& right);

    // |left + right| / 2 of the last input frame.
    float level() const { return level_; }
    // Smoothed peak of the level.
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
