// The phaser between its filters.
#include "tests/reference/phaser_stage.h"

namespace reference {

void PhaserStage::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    phaser_.setSampleRate(static_cast<float>(sampleRate), true);
    if (filtersInput()) rebuildInputFilters();
    for (OutputFilter& filter : outputFilters_) filter.setRate(sampleRate, highPassControl_);
}

void PhaserStage::setDefaults() {
    phaser_.setSampleRate(static_cast<float>(sampleRate_), false);
}

void PhaserStage::setStages(float control) {
    stages_ = control;
    phaser_.setStages(control >= 0.25f ? 1.0f : 0.0f);
    if (filtersInput()) rebuildInputFilters();
}

// The corner falls from 4000 Hz at one half to 500 Hz at 1.
void PhaserStage::rebuildInputFilters() {
    const double x = 2.0 * stages_ - 1.0;
    const BiquadCoefficients lowPass =
        designLowPass(4000.0 - x * x * 3500.0, kPhaserPreFilterQ, sampleRate_);
    for (PhaserPreFilter& filter : inputFilters_) filter.setCoefficients(lowPass);
}

void PhaserStage::setHighPass(float control, float smoothed) {
    highPassControl_ = control;
    for (OutputFilter& filter : outputFilters_) filter.setHighPass(smoothed, sampleRate_);
}

void PhaserStage::clear() {
    for (PhaserPreFilter& filter : inputFilters_) filter.clear();
    phaser_.clear();
    for (OutputFilter& filter : outputFilters_) filter.clear();
}

StereoSample PhaserStage::tick(StereoSample in) {
    if (!on_) return in;
    if (filtersInput()) {
        in.left = inputFilters_[0].tick(in.left);
        in.right = inputFilters_[1].tick(in.right);
    }
    StereoSample out;
    phaser_.process(in.left, in.right, &out.left, &out.right);
    return {static_cast<float>(outputFilters_[0].tick(out.left)),
            static_cast<float>(outputFilters_[1].tick(out.right))};
}

}  // namespace reference
