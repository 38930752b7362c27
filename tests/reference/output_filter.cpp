// Corners of the output filter.
#include "tests/reference/output_filter.h"

#include <algorithm>
#include <cmath>

#include "dsp/finite.h"

namespace reference {
namespace {

// Above these the stages are unstable. Rates from 41.5 kHz on never get there.
constexpr double kMaxFrequency1 = 1.6;
constexpr double kMaxFrequency2 = 1.2;

// Corner of the first stage, 98..8198 Hz.
float cornerHz(float x) {
    return x * x * x * 8100.0f + 98.0f;
}

}  // namespace

void OutputFilter::setHighPass(float x, double sampleRate) {
    if (!dsp::isUsableRate(sampleRate) || !std::isfinite(x)) return;
    const double f = cornerHz(x);
    frequency1_ = std::min(6.22 / sampleRate * f, kMaxFrequency1);
    frequency2_ = std::min(6.22 / sampleRate * (f * 0.1462585 + 86.0), kMaxFrequency2);
}

void OutputFilter::setRate(double sampleRate, float x) {
    clear();
    if (!dsp::isUsableRate(sampleRate) || !std::isfinite(x)) return;
    const float f = cornerHz(x);
    const float unit = 6.22f / static_cast<float>(sampleRate);
    frequency1_ = std::min<double>(unit * f, kMaxFrequency1);
    frequency2_ = std::min<double>(unit * (f * 0.1462585f + 86.0f), kMaxFrequency2);
}

}  // namespace reference
