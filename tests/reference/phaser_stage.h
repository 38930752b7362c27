// The stereo phaser between an optional input low-pass and the output filters, side by side.
#pragma once

#include <array>

#include "dsp/biquad.h"
#include "dsp/output_filter.h"
#include "dsp/stereo_phaser.h"
#include "engine/sound_engine.h"
#include "tests/reference/ensemble_chorus.h"

namespace reference {

class PhaserStage final : public engine::PhaserControl {
  public:
    void setRate(double sampleRate) {
        sampleRate_ = sampleRate;
        phaser_.setSampleRate(static_cast<float>(sampleRate), true);
        rebuildInputFilters();
        for (auto& filter : outputFilters_) filter.setRate(sampleRate, highPassControl_);
    }
    void setDefaults() override { phaser_.setSampleRate(static_cast<float>(sampleRate_), false); }
    void setOn(bool on) override { on_ = on; }
    void setRateControl(float control) override { phaser_.setRate(control); }
    void setDepthControl(float control) override { phaser_.setDepth(control); }
    void setFeedback(float amount) override { phaser_.setFeedback(amount); }
    void setStages(float control) override {
        stages_ = control;
        phaser_.setStages(control >= 0.25f ? 1.0f : 0.0f);
        rebuildInputFilters();
    }
    void setHighPass(float control, float smoothed) {
        highPassControl_ = control;
        for (auto& filter : outputFilters_) filter.setHighPass(smoothed, sampleRate_);
    }
    void clear() {
        for (auto& filter : inputFilters_) filter.clear();
        phaser_.clear();
        for (auto& filter : outputFilters_) filter.clear();
    }

    StereoSample tick(StereoSample in) {
        if (!on_) return in;
        if (filtersInput()) {
            in = {inputFilters_[0].tick(in.left), inputFilters_[1].tick(in.right)};
        }
        StereoSample out;
        phaser_.process(in.left, in.right, &out.left, &out.right);
        return {static_cast<float>(outputFilters_[0].tick(out.left)),
                static_cast<float>(outputFilters_[1].tick(out.right))};
    }

  private:
    bool filtersInput() const { return stages_ >= 0.5f; }
    // The corner falls from 4000 Hz at one half to 500 Hz at 1.
    void rebuildInputFilters() {
        if (!filtersInput()) return;
        const double x = 2.0 * stages_ - 1.0;
        const auto lowPass =
            dsp::designLowPass(4000.0 - x * x * 3500.0, dsp::kPhaserPreFilterQ, sampleRate_);
        for (auto& filter : inputFilters_) filter.setCoefficients(lowPass);
    }

    double sampleRate_ = 44100.0;
    bool on_ = false;
    float stages_ = 0.0f;
    float highPassControl_ = 0.0f;
    std::array<dsp::PhaserPreFilter, 2> inputFilters_;
    dsp::StereoPhaser phaser_;
    std::array<dsp::OutputFilter, 2> outputFilters_;
};

}  // namespace reference
