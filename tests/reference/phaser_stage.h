// The stereo phaser between an optional input low-pass and the output filters.
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
    // Clears the output filters and restarts the sweep at its centre; phaser parameters stay.
    void setRate(double sampleRate);

    void setDefaults() override;
    void setOn(bool on) override { on_ = on; }
    void setRateControl(float control) override { phaser_.setRate(control); }
    void setDepthControl(float control) override { phaser_.setDepth(control); }
    void setFeedback(float amount) override { phaser_.setFeedback(amount); }
    void setStages(float control) override;
    // See ToneStages::setHighPass.
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
