// DC blocker: a one-zero, one-pole high-pass at 40 Hz.
#pragma once

#include "dsp/finite.h"

namespace dsp {

class DcBlocker {
  public:
    void setRate(double sampleRate) {
        if (!isUsableRate(sampleRate)) return;
        // 251.32741 = 2 pi x 40
        pole_ = static_cast<float>(1.0 - 251.32741 / sampleRate);
    }
    void clear() { x1_ = y1_ = 0.0f; }

    float tick(float x) {
        const float y = x - x1_ + pole_ * y1_;
        x1_ = x;
        y1_ = y;
        return y;
    }

  private:
    float pole_ = static_cast<float>(1.0 - 251.32741 / 44100.0);
    float x1_ = 0.0f;
    float y1_ = 0.0f;
};

}  // namespace dsp
