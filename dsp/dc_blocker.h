// DC blocker: a one-zero, one-pole high-pass at 40 Hz.
#pragma once

#include "dsp/finite.h"
#include "dsp/stereo.h"

namespace dsp {

// y[n] = x[n] - x[n-1] + pole y[n-1],  pole = 1 - 2 pi x 40 Hz / sampleRate
//
// Value is float, or StereoFloat for several signals side by side.
template <typename Value>
class DcBlockerOf {
  public:
    void setRate(double sampleRate) {
        if (!isUsableRate(sampleRate)) return;
        // 251.32741 = 2 pi x 40
        pole_ = static_cast<float>(1.0 - 251.32741 / sampleRate);
    }
    void clear() { x1_ = y1_ = Value{}; }

    Value tick(Value x) {
        const Value y = x - x1_ + pole_ * y1_;
        x1_ = x;
        y1_ = y;
        return y;
    }
    // Copies the states of the lanes whose mask is set.
    template <typename Mask>
    void keep(const DcBlockerOf& from, Mask on) {
        x1_ = select(on, from.x1_, x1_);
        y1_ = select(on, from.y1_, y1_);
    }

  private:
    float pole_ = static_cast<float>(1.0 - 251.32741 / 44100.0);
    Value x1_{};
    Value y1_{};
};

using DcBlocker = DcBlockerOf<float>;

}  // namespace dsp
