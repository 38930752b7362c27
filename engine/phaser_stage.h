// The stereo phaser between an optional input low-pass and the output filters.
#pragma once

#include "dsp/biquad.h"
#include "dsp/output_filter.h"
#include "dsp/stereo_phaser.h"
#include "engine/segment.h"
#include "engine/sound_engine.h"

namespace engine {

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

    // Renders a part of a segment in place.
    void render(StereoSignal& signal, SegmentPart part);
    // Whether so many frames can be one run of the kernel, beside the tone.
    bool fitsBesideTone(int frames) const {
        return on_ && phaser_.stageCount() == 4 && phaser_.steadySamples(frames) == frames;
    }
    dsp::PhaserRun run(StereoSignal& signal, int from, int frames) {
        return {filtersInput() ? &inputFilter_ : nullptr,
                phaser_,
                outputFilter_,
                &signal.left[from],
                &signal.right[from],
                frames};
    }

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
