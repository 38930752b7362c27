// Modulation and taps of the ensemble chorus.
#include "tests/reference/ensemble_chorus.h"

namespace reference {

namespace {
constexpr double kSlowHertz = 0.86;
constexpr double kFastHertz = 6.5;
constexpr double kSlowRingSeconds = 0.3875968927775759;   // a third of the slow period
constexpr double kFastRingSeconds = 0.05128205128205128;  // a third of the fast period
constexpr float kModulationDepth = 3.3f;
constexpr double kShortestSeconds = 0.0017066702;
constexpr double kLongestSeconds = 0.0051200003;
constexpr float kInitialDelaySamples = 100.0f;
constexpr int kLineCapacity = 1922;  // samples
}  // namespace

EnsembleChorus::EnsembleChorus()
    : lines_{FractionalDelay(kInitialDelaySamples, kLineCapacity),
             FractionalDelay(kInitialDelaySamples, kLineCapacity),
             FractionalDelay(kInitialDelaySamples, kLineCapacity)} {
    slowLfo_.setFrequency(kSlowHertz);
    fastLfo_.setFrequency(kFastHertz);
    setRate(sampleRate_);
}

void EnsembleChorus::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    clearModulators();
    slowLfo_.setRate(sampleRate);
    fastLfo_.setRate(sampleRate);
    slowRing_.setLength(static_cast<int>(sampleRate * kSlowRingSeconds));
    fastRing_.setLength(static_cast<int>(sampleRate * kFastRingSeconds));
    slowRing_.clear();
    fastRing_.clear();
    for (FractionalDelay& line : lines_) line.reset();
}

void EnsembleChorus::setStereo(float amount) {
    rightWeight_ = {0.5f + 0.5f * amount, 0.5f - 0.5f * amount, 0.5f};
}

void EnsembleChorus::clearModulators() {
    slowLfo_.clear();
    fastLfo_.clear();
}

float EnsembleChorus::tickTap(int tap, float x, float modulation) {
    const float shortest = static_cast<float>(wide_ * kShortestSeconds * sampleRate_);
    const float longest = static_cast<float>(wide_ * kLongestSeconds * sampleRate_);
    lines_[tap].setDelay(shortest + (longest - shortest) * (modulation + 1.0f) * 0.5f);
    return lines_[tap].tick(x) * (1.0f - modulation * 0.4f);
}

StereoSample EnsembleChorus::tick(float x) {
    if (!on_) return {x, x * 0.5f};  // intentional: quieter on the right

    const float slow = slowLfo_.tick() * kModulationDepth * slowDepth_;
    const float fast = fastLfo_.tick() * kModulationDepth * fastDepth_;
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

}  // namespace reference
