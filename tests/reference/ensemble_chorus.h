// The ensemble chorus: three delay lines swept by a slow and a fast square modulator.
#pragma once

#include <array>

#include "tests/reference/delay_b.h"
#include "tests/reference/fractional_delay.h"
#include "dsp/square_lfo.h"
#include "tests/reference/stereo_sample.h"
#include "engine/sound_engine.h"
#include "tests/reference/names.h"

namespace reference {

class EnsembleChorus final : public ChorusControl {
  public:
    static constexpr int kTaps = 3;

    EnsembleChorus();

    // Empties all lines and rings and restarts the modulators.
    void setRate(double sampleRate);

    void setOn(bool on) override { on_ = on; }
    void setSlowDepth(float depth) override { slowDepth_ = depth; }
    void setFastDepth(float depth) override { fastDepth_ = depth; }
    void setWide(float wide) override { wide_ = wide; }
    void setStereo(float amount) override;
    void setDryAdd(float amount) override { dryAdd_ = amount; }

    void clearModulators();

    StereoSample tick(float x);

  private:
    float tickTap(int tap, float x, float modulation);

    double sampleRate_ = 44100.0;
    bool on_ = false;
    float slowDepth_ = 0.0f;
    float fastDepth_ = 0.0f;
    float wide_ = 1.0f;
    float dryAdd_ = 0.0f;
    std::array<float, kTaps> rightWeight_{0.5f, 0.5f, 0.5f};
    dsp::SquareLfo slowLfo_;
    dsp::SquareLfo fastLfo_;
    DelayB slowRing_;
    DelayB fastRing_;
    std::array<FractionalDelay, kTaps> lines_;
};

}  // namespace reference
