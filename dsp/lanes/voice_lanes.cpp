// Settings of the voices' lanes.
#include "dsp/lanes/voice_lanes.h"

#include <algorithm>

#include "dsp/module_fm_op.h"

namespace dsp {

template <int kLanes>
OperatorLanesOf<kLanes>::OperatorLanesOf() {
    inverseRate.fill(ModuleFMop::kInitialInverseRate);
    for (int lane = 0; lane < kLanes; ++lane) update(lane);
}

template <int kLanes>
void OperatorLanesOf<kLanes>::setRate(int lane, float sampleRate) {
    inverseRate[lane] = 1.0f / sampleRate;
    update(lane);
}

template <int kLanes>
void OperatorLanesOf<kLanes>::setFrequency(int lane, float hz) {
    frequency[lane] = hz;
    update(lane);
}

template <int kLanes>
void OperatorLanesOf<kLanes>::update(int lane) {
    const float perSample = frequency[lane] * inverseRate[lane];
    gain[lane] = ModuleFMop::feedbackGain(frequency[lane]);
    increment[lane] = std::min(perSample, ModuleFMop::kMaxIncrement);
    squaredIncrement[lane] = std::min(perSample, ModuleFMop::kMaxIncrementSquared);
}

template <int kLanes>
void OperatorLanesOf<kLanes>::clear(int lane) {
    previous[lane] = low[lane] = high[lane] = 0.0f;
}

template struct OperatorLanesOf<kVoiceLanes>;
template struct OperatorLanesOf<kBassLanes>;

void BiquadLanes::setCoefficients(int lane, const BiquadCoefficients& c) {
    b0[lane] = c.b0;
    b1[lane] = c.b1;
    b2[lane] = c.b2;
    a1[lane] = c.a1;
    a2[lane] = c.a2;
}

void BiquadLanes::clear(int lane) {
    x1[lane] = x2[lane] = y1[lane] = y2[lane] = 0.0f;
}

}  // namespace dsp
