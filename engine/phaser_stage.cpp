// The phaser between its filters.
#include "engine/phaser_stage.h"

namespace engine {

void PhaserStage::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    phaser_.setSampleRate(static_cast<float>(sampleRate), true);
    if (filtersInput()) rebuildInputFilter();
    outputFilter_.setRate(sampleRate, highPassControl_);
}

void PhaserStage::setDefaults() {
    phaser_.setSampleRate(static_cast<float>(sampleRate_), false);
}

void PhaserStage::setStages(float control) {
    stages_ = control;
    phaser_.setStages(control >= 0.25f ? 1.0f : 0.0f);
    if (filtersInput()) rebuildInputFilter();
}

// The corner falls from 4000 Hz at one half to 500 Hz at 1.
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

void PhaserStage::render(StereoSignal& signal, SegmentPart part) {
    if (!on_) return;
    const int end = part.from + part.frames;
    for (int from = part.from; from < end;) {
        const int count = phaser_.steadySamples(end - from);
        kernels_.runPhaser(run(signal, from, count));
        from += count;
    }
}

}  // namespace engine
