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
constexpr float kBreathBelow = 0.01f;  // the breath filter runs while "HP" is below
constexpr float kBreathDamping = 1.14f;
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
    lowCut_.setCoefficient(dsp::cornerCoefficient(smoothed * 615.0 + 20.0, sampleRate_));
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

void ToneStages::begin(const ToneSources& sources, const Sections& sections, int frames,
                       Signal& mix) {
    const int bassFrames = std::min(sources.bass.sounding, frames);
    filterSections(sources, sections, true, 0, bassFrames);
    filterSections(sources, sections, false, bassFrames, frames);
    mixSections(sources, sections, frames, mix);
    breathe(frames, mix);
}

void ToneStages::filterSections(const ToneSources& sources, const Sections& sections,
                                bool bassSounds, int from, int until) {
    if (from == until) return;
    const auto mask = [&](Section section, bool sounds) {
        return sections.on[section] && sounds ? -1 : 0;
    };
    const dsp::SectionMask on = {mask(kContrabass, bassSounds), mask(kCello, bassSounds),
                                 mask(kBrass, true), mask(kHorn, true)};
    const bool basses = on[0] | on[1];
    const bool formants = on[2] | on[3];
    const bool rest = from >= sources.voices.sounding && sectionFilters_.formantsRest();
    if (!basses && (!formants || rest)) {
        if (from >= zerosFrom_) return;
        std::fill(bass_.begin() + from, bass_.end(), dsp::SectionFloat{});
        std::fill(brassBand_.begin() + from, brassBand_.end(), 0.0f);
        std::fill(hornBand_.begin() + from, hornBand_.end(), 0.0f);
        zerosFrom_ = from;
        return;
    }
    zerosFrom_ = std::max(zerosFrom_, until);
    const dsp::SectionFloat levels = {sections.level[kContrabass], sections.level[kCello]};
    kernels_.runSections({sectionFilters_, on, levels, &sources.bass.tone[BassRows::at(from)],
                          &sources.bass.amplitude[from], &sources.voices.viola[from], &bass_[from],
                          &brassBand_[from], &hornBand_[from], until - from});
}

void ToneStages::mixSections(const ToneSources& sources, const Sections& sections, int frames,
                             Signal& mix) {
    const auto levelOf = [&](Section section) {
        return sections.on[section] ? sections.level[section] : 0.0f;
    };
    sources.random = dsp::Random(kernels_.mixSections(
        {sources.random.state(), sources.voices.viola.data(), sources.voices.violin.data(),
         brassBand_.data(), hornBand_.data(), levelOf(kViola), levelOf(kViolin), levelOf(kBrass),
         levelOf(kHorn), sources.gains.data(), sources.gainScale, sources.sectionLevels.data(),
         nextNoise(frames), dither_.data(), noise_.data(), mix.data(), frames}));
}

const float* ToneStages::nextNoise(int frames) {
    const std::size_t first = noiseIndex_ + 1 < bowNoise_.size() ? noiseIndex_ + 1 : 0;
    noiseIndex_ = (noiseIndex_ + static_cast<std::size_t>(frames)) % bowNoise_.size();
    if (first + kRowStride <= bowNoise_.size()) return &bowNoise_[first];
    for (int t = 0; t < frames; ++t) {
        noise_[t] = bowNoise_[(first + static_cast<std::size_t>(t)) % bowNoise_.size()];
    }
    return noise_.data();
}

// The noise also modulates the corner of the breath filter, one frame ahead.
void ToneStages::breathe(int frames, Signal& mix) {
    const auto coefficient = [&](int t) {
        return limitedCoefficient(kTwoPi / sampleRate_ * (noise_[t] + 1.0) * kBreathHertz);
    };
    if (highPassControl_ < kBreathBelow) {
        dsp::StateVariableFilter breath = breath_;
        Signal coefficients;
        for (int t = 0; t < frames; ++t) coefficients[t] = coefficient(t);
        for (int t = 0; t < frames; ++t) {
            mix[t] += 0.5f * breath.process(mix[t]);
            breath.setCoefficient(coefficients[t]);
        }
        breath_ = breath;
    }
    breath_.setCoefficient(coefficient(frames - 1));
}

}  // namespace engine
