// The mono tone path, stage by stage.
#include "tests/reference/tone_stages.h"

#include <algorithm>

namespace reference {

namespace {
constexpr double kTwoPi = 6.28319;
constexpr double kBreathHertz = 2100.0;
constexpr double kBreathCoefficientScale = 13194.699;  // 6.28319 x 2100
constexpr double kBreathRateChangeScale = 28274.355;   // 6.28319 x 4500
constexpr float kBreathMakeUp = 0.553f;
constexpr float kBreathDamping = 1.14f;
constexpr float kBreathBelow = 0.01f;                // the breath filter runs while "HP" is below
constexpr double kTopCutScale = 40526.5755;          // 6.28319 x 6450
constexpr double kTopCutScaleHighRate = 35437.1916;  // 6.28319 x 5640
constexpr double kHighRate = 88200.0;
// The corner is the rate / 7.35, or 6000 Hz at 44100 Hz.
constexpr double kShelfCoefficient = kTwoPi * 0.1360544235340355;

float limitedCoefficient(double c) {
    return std::clamp(static_cast<float>(c), 0.03f, 0.998f);
}
}  // namespace

ToneStages::ToneStages() : bowNoise_(dsp::bowNoise()) {
    breath_.setShape(kBreathMakeUp, kBreathDamping);
    brightnessShelf_.setCoefficient(static_cast<float>(kShelfCoefficient));
}

void ToneStages::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    shelf_.setSampleRate(static_cast<float>(sampleRate));
    // intentional: lasts for one sample when a program is pushed within a block
    breath_.setCoefficient(limitedCoefficient(kBreathRateChangeScale / sampleRate));
    output_.setRate(sampleRate, highPassControl_);
}

void ToneStages::beginBlock() {
    breath_.setCoefficient(limitedCoefficient(kBreathCoefficientScale / sampleRate_));
    const double topCut = sampleRate_ >= kHighRate ? kTopCutScaleHighRate : kTopCutScale;
    topCut_.setCoefficient(limitedCoefficient(topCut / sampleRate_));
}

void ToneStages::setHighPass(float control, float smoothed) {
    highPassControl_ = control;
    output_.setHighPass(smoothed, sampleRate_);
    lowCut_.setCoefficient(static_cast<float>(kTwoPi / sampleRate_ * (smoothed * 615.0 + 20.0)));
}

void ToneStages::setBrightness(float control) {
    brightness_ = control;
    shelf_.setControl(control);
}

void ToneStages::clearFormants() {
    brass_.clear();
    horn_.clear();
}

void ToneStages::clear() {
    clearFormants();
    breath_.clear();
    lowCut_.clear();
    brightnessShelf_.clear();
    topCut_.clear();
    output_.clear();
}

float ToneStages::mixSections(const SectionSums& sums, const Sections& sections) {
    float mix = 0.0f;
    const float bus = sums.brassHorn;
    if (sections.on[kBrass]) {
        mix += (bus * 0.15f + brass_.processBandPass(bus) * 0.684f) * sections.level[kBrass];
    }
    if (sections.on[kHorn]) {
        mix += (horn_.processBandPass(bus) * 0.432f + bus * 0.15f) * sections.level[kHorn];
    }
    if (sections.on[kViolin]) mix += sums.violin * sections.level[kViolin];
    if (sections.on[kViola]) mix += sums.viola * sections.level[kViola];
    return mix;
}

float ToneStages::addBowNoise(float mix, float sectionLevel, float dither) {
    const float noise = (sectionLevel * 0.04f + dither) * bowNoise_[noiseIndex_];
    mix += noise;
    if (highPassControl_ < kBreathBelow) mix += 0.5f * breath_.process(mix);
    // The noise also moves the breath filter's corner for the next sample.
    const double coefficient = kTwoPi / sampleRate_ * (noise + 1.0) * kBreathHertz;
    breath_.setCoefficient(limitedCoefficient(coefficient));
    return mix;
}

float ToneStages::shape(float mix) {
    float shelved[2];
    shelf_.process(mix, shelved);
    float x = shelved[0];
    x -= lowCut_.tickLowPass(x);
    brightnessShelf_.tickLowPass(x);
    x = (x - brightnessShelf_.state() - dsp::kSmallestNormal) * 2.0f * brightness_ + x;
    return x * 0.5f;
}

float ToneStages::finish(float mix, float dither) {
    const float x = topCut_.tickLowPass(mix) + dither;
    return static_cast<float>(output_.tick(x));
}

}  // namespace reference
