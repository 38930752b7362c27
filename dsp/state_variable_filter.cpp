// Settings of the state-variable filter.
#include "dsp/state_variable_filter.h"

#include <algorithm>

#include "dsp/finite.h"
#include "dsp/one_pole.h"

namespace dsp {

void StateVariableFilter::reset() {
    *this = StateVariableFilter();
}

void StateVariableFilter::clear() {
    first_ = second_ = StateVariableStage<float>();
}

void StateVariableFilter::setRate(float sampleRate) {
    if (isUsableRate(sampleRate)) sampleRate_ = sampleRate;
}

void StateVariableFilter::setCutoff(float hz) {
    setCoefficient(cornerCoefficient(hz, sampleRate_));
}

void StateVariableFilter::setResonance(float resonance) {
    if (!std::isfinite(resonance)) return;
    const float r = std::clamp(resonance, 0.3f, 0.93f);
    makeUp_ = static_cast<float>(0.94 - r * 0.9);
    k_ = (1.0f - r) + (1.0f - r);
}

void StateVariableFilter::setShape(float makeUp, float damping) {
    assignFinite(makeUp_, makeUp);
    assignFinite(k_, damping);
}

}  // namespace dsp
