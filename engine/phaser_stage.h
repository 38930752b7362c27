// The phaser with its optional low-pass ahead and the output filters behind, left and right.
#pragma once

#include "dsp/biquad.h"
#include "dsp/output_filter.h"
#include "dsp/stereo_phaser.h"
#include "engine/segment.h"
#include "engine/sound_engine.h"

namespace engine {

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

    // A segment.
    void render(StereoSignal& signal, int frames);

  private:
    bool filtersInput() const { return stages_ >= 0.5f; }
    void rebuildInputFilter();

    const dsp::Kernels& kernels_ = dsp::kernels();
    double sampleRate_ = 44100.0;
    bool on_ = false;
    float stages_ = 0.0f;
    float highPassControl_ = 0.0f;
    dsp::StereoPhaserPreFilter inputFilter_;
    dsp::StereoPhaser phaser_;
    dsp::StereoOutputFilter outputFilter_;
};

}  // namespace engine
