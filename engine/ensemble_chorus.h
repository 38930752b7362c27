// The ensemble chorus: three delay lines swept by a slow and a fast square modulator.
#pragma once

#include <array>
#include <optional>

#include "dsp/delay_b.h"
#include "dsp/fractional_delay.h"
#include "dsp/square_lfo.h"
#include "engine/segment.h"
#include "engine/sound_engine.h"

namespace engine {

// Each tap delays by shortest + (longest - shortest) (u + 1) / 2 and scales by 1 - 0.4 u. With the
// modulators s (slow) and f (fast), and s', f' delayed by a third of their period, the taps take
//
//     u1 = s + f,  u2 = s' + f',  u3 = -s - f'
class EnsembleChorus : public ChorusControl {
  public:
    static constexpr int kTaps = dsp::kChorusTaps;

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

    // Delay of a tap within its range: 0 is the shortest, 1 the longest. Strong modulation exceeds
    // both.
    float tapPosition(int tap) const;

    // One segment: first its modulation, then its frames, all or part by part. A part is rendered
    // either as a whole or, if the chorus is on and no tap reaches into the part, the taps alone
    // before the input is known, and the input afterwards. Before `modulate`, what `begin` returns
    // has to be carried out, unless it is null.
    struct Run {
        Signal slow, fast;
        std::optional<dsp::BesidePhases> modulators;
        std::array<Signal, kTaps> delays, gains, taps;
    };
    const dsp::BesidePhases* begin(Run& run, int frames);
    void modulate(Run& run, int frames);
    void render(Run& run, const Signal& in, SegmentPart part, StereoSignal& out);
    bool renderTaps(Run& run, SegmentPart part, StereoSignal& out);
    void feed(const Signal& in, SegmentPart part);
    float dryGain() const { return dryAdd_; }

  protected:
    float shortestDelay() const;  // samples
    float longestDelay() const;

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

  private:
    void mix(const Run& run, const float* in, SegmentPart part, StereoSignal& out);

    const dsp::Kernels& kernels_ = dsp::kernels();
};

}  // namespace engine
