// The mono tone path, stage by stage.
#include "engine/tone_stages.h"

#include <algorithm>

namespace engine {

namespace {
constexpr double kTwoPi = 6.28319;
constexpr double kBreathHertz = 2100.0;
constexpr double kBreathCoefficientScale = 13194.699;  // 6.28319 x 2100
constexpr double kBreathRateChangeScale = 28274.355;   // 6.28319 x 4500
constexpr float kBreathMakeUp = 0.553f;
constexpr float kBreathDamping = 1.14f;
constexpr float kBreathBelow = 0.01f;  // "HP" control under which the breath filter runs
// The top cut's corner is near 5640 Hz at high rates and near 6450 Hz at the usual ones.
constexpr double kTopCutScale = 40526.5755;
constexpr double kTopCutScaleHighRate = 35437.1916;
constexpr double kHighRate = 88200.0;
// Corner at a 7.35th of the rate, whatever the rate.
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
    // Heard for one sample, when a program is pushed within a block: kept.
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

void ToneStages::renderSections(const SectionSums& sums, const Sections& sections,
                                const Signal& gains, int frames, Signal& mix) {
    dsp::StateVariableFilter brass = brass_;
    dsp::StateVariableFilter horn = horn_;
    for (int t = 0; t < frames; ++t) {
        float x = 0.0f;
        const float bus = sums.brassHorn ? sums.viola[t] : 0.0f;
        if (sections.on[kBrass]) {
            x += (bus * 0.15f + brass.processBandPass(bus) * 0.684f) * sections.level[kBrass];
        }
        if (sections.on[kHorn]) {
            x += (horn.processBandPass(bus) * 0.432f + bus * 0.15f) * sections.level[kHorn];
        }
        if (sections.on[kViolin]) x += sums.violin[t] * sections.level[kViolin];
        if (sections.on[kViola]) x += sums.viola[t] * sections.level[kViola];
        mix[t] = gains[t] == 0.0f ? 0.0f : x * gains[t];
    }
    brass_ = brass;
    horn_ = horn;
}

void ToneStages::addBowNoise(const Signal& sectionLevels, const Signal& dither, int frames,
                             Signal& mix) {
    const bool breathes = highPassControl_ < kBreathBelow;
    float noise = 0.0f;
    // The noise also moves the breath filter's corner for the next sample.
    const auto follow = [&] {
        const double coefficient = kTwoPi / sampleRate_ * (noise + 1.0) * kBreathHertz;
        breath_.setCoefficient(limitedCoefficient(coefficient));
    };
    for (int t = 0; t < frames; ++t) {
        noiseIndex_ = noiseIndex_ + 1 < bowNoise_.size() ? noiseIndex_ + 1 : 0;
        noise = (sectionLevels[t] * 0.04f + dither[t]) * bowNoise_[noiseIndex_];
        mix[t] += noise;
        if (!breathes) continue;
        mix[t] += 0.5f * breath_.process(mix[t]);
        follow();
    }
    if (!breathes) follow();
}

void ToneStages::renderTone(const BassRows& bass, const Signal& dither, int frames, Signal& mix) {
    for (int from = 0; from < frames;) {
        const int until = std::min(frames, from + shelf_.steadySamples());
        renderSteadyTone(bass, dither, from, until, mix);
        from = until;
    }
}

// Few filters a loop: each waits for its own last sample, and the processor sees far enough ahead
// to fill the wait with the next ones.
void ToneStages::renderSteadyTone(const BassRows& bass, const Signal& dither, int from, int until,
                                  Signal& mix) {
    dsp::ShelfTone::Filter shelf = shelf_.filter();
    dsp::OnePole lowCut = lowCut_;
    dsp::OnePole brightnessShelf = brightnessShelf_;
    const float brightness = brightness_;
    for (int t = from; t < until; ++t) {
        float x = shelf.tick(mix[t]);
        x -= lowCut.tickLowPass(x);
        brightnessShelf.tickLowPass(x);
        x = (x - brightnessShelf.state() - dsp::kSmallestNormal) * 2.0f * brightness + x;
        mix[t] = x * 0.5f;
    }
    shelf_.advance(shelf, until - from);
    lowCut_ = lowCut;
    brightnessShelf_ = brightnessShelf;

    const int sounding = std::min(until, bass.sounding);
    for (int t = from; t < sounding && bass.contrabassOn; ++t) mix[t] += bass.contrabass[t];
    for (int t = from; t < sounding && bass.celloOn; ++t) mix[t] += bass.cello[t];

    dsp::OnePole topCut = topCut_;
    dsp::OutputFilter output = output_;
    for (int t = from; t < until; ++t) {
        const float x = topCut.tickLowPass(mix[t]) + dither[t];
        mix[t] = static_cast<float>(output.tick(x));
    }
    topCut_ = topCut;
    output_ = output;
}

}  // namespace engine
