// Settings of the operator.
#include "dsp/module_fm_op.h"

#include "dsp/finite.h"

namespace dsp {

void ModuleFMop::setRate(float sampleRate) {
    if (!isUsableRate(sampleRate)) return;
    inverseRate_ = 1.0f / sampleRate;
    increment_ = frequency_ * inverseRate_;
}

void ModuleFMop::setFrequency(float hz) {
    if (!std::isfinite(hz) || hz < 0.0f) return;
    frequency_ = hz;
    increment_ = frequency_ * inverseRate_;
}

void ModuleFMop::clear() {
    previousOut_ = lowState_ = highState_ = 0.0f;
}

}  // namespace dsp
