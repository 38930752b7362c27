// Keeps the output within full scale.
#pragma once

namespace app {

// Turns both sides down at once where a frame exceeds full scale, and comes back within half a
// second. Sound below full scale passes unchanged.
class Ceiling {
  public:
    explicit Ceiling(int sampleRate);  // Hz

    void hold(float& left, float& right);

  private:
    float recovery_;  // share of the missing gain that comes back with each frame
    float gain_ = 1.0f;
};

}  // namespace app
