// The phaser between its filters.
#include "engine/phaser_stage.h"

#include "dsp/stagger.h"

namespace engine {

void PhaserStage::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    phaser_.setSampleRate(static_cast<float>(sampleRate), true);
    if (filtersInput()) rebuildInputFilter();
    outputFilter_.setRate(sampleRate, highPassControl_);
}

void PhaserStage::setStages(float control) {
    stages_ = control;
    phaser_.setStages(control >= 0.25f ? 1.0f : 0.0f);
    if (filtersInput()) rebuildInputFilter();
}

// From 4000 Hz at one half down to 500 Hz at 1.
void PhaserStage::rebuildInputFilter() {
    const double x = 2.0 * stages_ - 1.0;
    const dsp::BiquadCoefficients lowPass =
        dsp::designLowPass(4000.0 - x * x * 3500.0, dsp::kPhaserPreFilterQ, sampleRate_);
    inputFilter_.setCoefficients(lowPass);
}

void PhaserStage::setHighPass(float control, float smoothed) {
    highPassControl_ = control;
    outputFilter_.setHighPass(smoothed, sampleRate_);
}

void PhaserStage::clear() {
    inputFilter_.clear();
    phaser_.clear();
    outputFilter_.clear();
}

void PhaserStage::render(StereoSignal& signal, int frames) {
    if (!on_) return;
    for (int from = 0; from < frames;) {
        const int until = from + phaser_.steadySamples(frames - from);
        if (phaser_.stageCount() == 2) {
            renderRun<2>(signal, from, until);
        } else {
            renderRun<4>(signal, from, until);
        }
        from = until;
    }
}

template <int kStages>
void PhaserStage::renderRun(StereoSignal& signal, int from, int until) {
    std::array<dsp::StereoFloat, kLongestSegment> both;
    for (int t = from; t < until; ++t) both[t] = dsp::stereo(signal.left[t], signal.right[t]);
    dsp::StereoPhaserPreFilter inputFilter = inputFilter_;
    const auto filterInput = [&](int t) { both[t] = inputFilter.tick(both[t]); };
    dsp::StereoPhaser::Run<kStages> phaser(phaser_);
    const auto phase = [&](int t) { both[t] = phaser.tick(both[t]); };
    dsp::StereoOutputFilter output = outputFilter_;
    std::array<dsp::StereoOutputFilter::Between, kLongestSegment> between;
    const auto cut = [&](int t) { between[t] = output.tickFirst(dsp::widened(both[t])); };
    const auto finish = [&](int t) {
        const dsp::StereoDouble out = output.tickSecond(between[t]);
        signal.left[t] = static_cast<float>(out[0]);
        signal.right[t] = static_cast<float>(out[1]);
    };
    if (filtersInput()) {
        dsp::stagger(from, until, filterInput, phase, cut, finish);
        inputFilter_ = inputFilter;
    } else {
        dsp::stagger(from, until, phase, cut, finish);
    }
    phaser_.advance(phaser);
    outputFilter_ = output;
}

}  // namespace engine
