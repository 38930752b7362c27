// Settings of the smoother.
#include "dsp/smoother.h"

#include <cmath>

namespace dsp {

void Smoother::setTime(float milliseconds) {
    if (!std::isfinite(milliseconds) || milliseconds < 0.0f) return;
    coefficient_ = static_cast<float>(1.0 - std::pow(0.001, 1000.0 / (milliseconds * 44100.0)));
    highPassCoefficient_ = kHighPassCoefficient;
}

}  // namespace dsp
