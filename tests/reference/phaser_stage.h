// The phaser with its optional low-pass ahead and the output filters behind, left and right.
#pragma once

#include <array>

#include "tests/reference/biquad.h"
#include "tests/reference/output_filter.h"
#include "tests/reference/stereo_phaser.h"
#include "tests/reference/stereo_sample.h"
#include "engine/sound_engine.h"
#include "tests/reference/names.h"

namespace reference {

class PhaserStage final : public PhaserControl {
  public:
    // Clears the output filters; phaser parameters are kept, the sweep starts at its centre.
    void setRate(double sampleRate);

    void setDefaults() override;
    void setOn(bool on) override { on_ = on; }
    void setRateControl(float control) override { phaser_.setRate(control); }
    void setDepthControl(float control) override { phaser_.setDepth(control); }
    void setFeedback(float amount) override { phaser_.setFeedback(amount); }
    void setStages(float control) override;
    // As for ToneStages.
    void setHighPass(float control, float smoothed);

    void clear();

    StereoSample tick(StereoSample in);

  private:
    bool filtersInput() const { return stages_ >= 0.5f; }
    void rebuildInputFilters();

    double sampleRate_ = 44100.0;
    bool on_ = false;
    float stages_ = 0.0f;
    float highPassControl_ = 0.0f;
    std::array<PhaserPreFilter, 2> inputFilters_;
    StereoPhaser phaser_;
    std::array<OutputFilter, 2> outputFilters_;
};

}  // namespace reference
