// The mono tone path, stage by stage.
#include "engine/tone_stages.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "dsp/stagger.h"

namespace engine {

namespace {
constexpr double kTwoPi = 6.28319;
constexpr double kBreathHertz = 2100.0;
constexpr double kBreathCoefficientScale = 13194.699;  // 6.28319 x 2100
constexpr double kBreathRateChangeScale = 28274.355;   // 6.28319 x 4500
constexpr float kBreathMakeUp = 0.553f;
constexpr float kBreathDamping = 1.14f;
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
    sectionFilters_.setRate(sampleRate);
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

void ToneStages::clear() {
    sectionFilters_.clear();
    breath_.clear();
    lowCut_.clear();
    brightnessShelf_.clear();
    topCut_.clear();
    output_.clear();
}

void ToneStages::render(const ToneSources& sources, const Sections& sections, int frames,
                        Signal& mix) {
    renderNoise(sources, frames);
    for (int from = 0; from < frames;) {
        int until = std::min(frames, from + shelf_.steadySamples());
        if (from < sources.bass.sounding) until = std::min(until, sources.bass.sounding);
        renderRun(sources, sections, from, until, mix);
        from = until;
    }
    if (!breathes()) moveBreath(noise_[frames - 1]);
}

void ToneStages::renderNoise(const ToneSources& sources, int frames) {
    for (int t = 0; t < frames; ++t) {
        noiseIndex_ = noiseIndex_ + 1 < bowNoise_.size() ? noiseIndex_ + 1 : 0;
        noise_[t] = bowNoise_[noiseIndex_];
    }
    for (int t = 0; t < frames; ++t) {
        noise_[t] = (sources.sectionLevels[t] * 0.04f + sources.dither[t]) * noise_[t];
    }
}

// The noise also moves the breath filter's corner for the next sample.
void ToneStages::moveBreath(float noise) {
    const double coefficient = kTwoPi / sampleRate_ * (noise + 1.0) * kBreathHertz;
    breath_.setCoefficient(limitedCoefficient(coefficient));
}

void ToneStages::breathe(int from, int until, Signal& mix) {
    for (int t = from; t < until; ++t) {
        mix[t] += 0.5f * breath_.process(mix[t]);
        moveBreath(noise_[t]);
    }
}

// Flattened: the states of the stages are to stay in registers.
__attribute__((flatten)) void ToneStages::renderRun(const ToneSources& sources,
                                                    const Sections& sections, int from, int until,
                                                    Signal& mix) {
    const auto levelOf = [&](Section section) {
        return sections.on[section] ? sections.level[section] : 0.0f;
    };
    const auto maskOf = [](bool on) { return on ? -1 : 0; };
    const bool bassSounds = from < sources.bass.sounding;
    const SectionMask on = {maskOf(bassSounds && sections.on[kContrabass]),
                            maskOf(bassSounds && sections.on[kCello]), maskOf(sections.on[kBrass]),
                            maskOf(sections.on[kHorn])};
    const SectionFloat levels = {sections.level[kContrabass], sections.level[kCello],
                                 levelOf(kBrass), levelOf(kHorn)};
    const float violinLevel = levelOf(kViolin);
    const float violaLevel = levelOf(kViola);
    const Signal& viola = sources.voices.viola;
    std::array<SectionFloat, kLongestSegment> bass;

    SectionFilters filters = sectionFilters_;
    const auto filterSections = [&](int t) {
        SectionFloat tone;
        std::memcpy(&tone, &sources.bass.tone[t * dsp::kBassLanes], sizeof tone);
        tone = tone * (sources.bass.amplitude[t] * levels * 0.4f);
        const SectionFloat bus = viola[t] - SectionFloat{};
        const SectionFloat band =
            filters.tickFirst(__builtin_shuffle(tone, bus, SectionMask{0, 1, 4, 4}));
        bass[t] = filters.low();
        const SectionFloat formants =
            (bus * 0.15f + band * SectionFloat{0.0f, 0.0f, 0.684f, 0.432f}) * levels;
        // A section that is off adds +0, which changes nothing.
        float x = 0.0f + formants[2];
        x += formants[3];
        x += sources.voices.violin[t] * violinLevel;
        x += viola[t] * violaLevel;
        const float gain = sources.gains[t];
        const float scaled = x * gain;
        mix[t] = (gain == 0.0f ? 0.0f : scaled) + noise_[t];
    };
    dsp::ShelfTone::Filter shelf = shelf_.filter();
    const auto shelve = [&](int t) {
        bass[t] = dsp::masked(filters.tickBass(bass[t]), on);
        mix[t] = shelf.tick(mix[t]);
    };
    dsp::OnePole lowCut = lowCut_;
    dsp::OnePole brightnessShelf = brightnessShelf_;
    const float brightness = brightness_;
    const auto brighten = [&](int t) {
        float x = mix[t];
        x -= lowCut.tickLowPass(x);
        brightnessShelf.tickLowPass(x);
        x = (x - brightnessShelf.state() - dsp::kSmallestNormal) * 2.0f * brightness + x;
        mix[t] = x * 0.5f + bass[t][0] + bass[t][1];
    };
    dsp::OnePole topCut = topCut_;
    dsp::OutputFilter output = output_;
    std::array<double, kLongestSegment> between;
    const auto cut = [&](int t) {
        const float x = topCut.tickLowPass(mix[t]) + sources.dither[t];
        between[t] = output.tickFirst(x);
    };
    const auto finish = [&](int t) { mix[t] = static_cast<float>(output.tickSecond(between[t])); };

    if (breathes()) {
        dsp::stagger(from, until, filterSections);
        breathe(from, until, mix);
        dsp::stagger(from, until, shelve, brighten, cut, finish);
    } else {
        dsp::stagger(from, until, filterSections, shelve, brighten, cut, finish);
    }

    sectionFilters_.keep(filters, on);
    shelf_.advance(shelf, until - from);
    lowCut_ = lowCut;
    brightnessShelf_ = brightnessShelf;
    topCut_ = topCut;
    output_ = output;
}

}  // namespace engine
