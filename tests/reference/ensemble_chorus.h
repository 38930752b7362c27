// The ensemble chorus: three delay lines swept by a slow and a fast square modulator.
#pragma once

#include "engine/ensemble_chorus.h"

namespace reference {

struct StereoSample {
    float left;
    float right;
};

class EnsembleChorus final : public engine::EnsembleChorus {
  public:
    StereoSample tick(float x) {
        if (!on_) return {x, x * 0.5f};  // intentional: quieter on the right
        const float slow = slowLfo_.tick() * 3.3f * slowDepth_;
        const float fast = fastLfo_.tick() * 3.3f * fastDepth_;
        const float slowDelayed = slowRing_.readThenWrite(slow);
        const float fastDelayed = fastRing_.readThenWrite(fast);
        const float tap1 = tickTap(0, x, slow + fast);
        const float tap2 = tickTap(1, x, slowDelayed + fastDelayed);
        const float tap3 = tickTap(2, x, -slow - fastDelayed);
        const float dry = x * -0.5f * dryAdd_;
        const auto& w = rightWeight_;
        return {(1.0f - w[2]) * tap3 + (1.0f - w[1]) * tap2 + (1.0f - w[0]) * tap1 + dry,
                w[2] * tap3 + w[1] * tap2 + w[0] * tap1 + dry};
    }

  private:
    float tickTap(int tap, float x, float modulation) {
        const float shortest = shortestDelay();
        const float longest = longestDelay();
        lines_[tap].setDelay(shortest + (longest - shortest) * (modulation + 1.0f) * 0.5f);
        return lines_[tap].tick(x) * (1.0f - modulation * 0.4f);
    }
};

}  // namespace reference
