// The ensemble chorus: three delay lines swept by a slow and a fast square modulator.
#pragma once

#include <array>

#include "dsp/delay_b.h"
#include "dsp/fractional_delay.h"
#include "dsp/square_lfo.h"
#include "engine/signal.h"

namespace engine {

class EnsembleChorus {
  public:
    static constexpr int kTaps = 3;

    EnsembleChorus();

    // Empties all lines and rings; the modulators start anew.
    void setRate(double sampleRate);

    void setOn(bool on) { on_ = on; }
    void setSlowDepth(float depth) { slowDepth_ = depth; }
    void setFastDepth(float depth) { fastDepth_ = depth; }
    // Scales the range of the delays: 1..2.
    void setWide(float wide) { wide_ = wide; }
    // 0..1: how far apart the outer taps stand.
    void setStereo(float amount);
    void setDryAdd(float amount) { dryAdd_ = amount; }

    void clearModulators();

    // Where in the range of the delays a tap stands, 0 the shortest to 1 the longest. A strong
    // modulation leaves the range.
    float tapPosition(int tap) const;

    StereoSample tick(float x);

  private:
    float shortestDelay() const;  // samples
    float longestDelay() const;
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
    dsp::DelayB slowRing_;
    dsp::DelayB fastRing_;
    std::array<dsp::FractionalDelay, kTaps> lines_;
};

}  // namespace engine
