// The ensemble chorus: three delay lines swept by a slow and a fast square modulator.
#pragma once

#include <array>

#include "dsp/delay_b.h"
#include "dsp/fractional_delay.h"
#include "dsp/square_lfo.h"
#include "engine/sound_engine.h"

namespace reference {

struct StereoSample {
    float left;
    float right;
};

class EnsembleChorus final : public engine::ChorusControl {
  public:
    EnsembleChorus() {
        slowLfo_.setFrequency(0.86);
        fastLfo_.setFrequency(6.5);
        setRate(sampleRate_);
    }

    void setRate(double sampleRate) {
        sampleRate_ = sampleRate;
        clearModulators();
        slowLfo_.setRate(sampleRate);
        fastLfo_.setRate(sampleRate);
        // A third of their periods.
        slowRing_.setLength(static_cast<int>(sampleRate * 0.3875968927775759));
        fastRing_.setLength(static_cast<int>(sampleRate * 0.05128205128205128));
        slowRing_.clear();
        fastRing_.clear();
        for (dsp::FractionalDelay& line : lines_) line.reset();
    }
    void setOn(bool on) override { on_ = on; }
    void setSlowDepth(float depth) override { slowDepth_ = depth; }
    void setFastDepth(float depth) override { fastDepth_ = depth; }
    void setWide(float wide) override { wide_ = wide; }
    void setStereo(float amount) override {
        rightWeight_ = {0.5f + 0.5f * amount, 0.5f - 0.5f * amount, 0.5f};
    }
    void setDryAdd(float amount) override { dryAdd_ = amount; }
    void clearModulators() {
        slowLfo_.clear();
        fastLfo_.clear();
    }

    StereoSample tick(float x) {
        if (!on_) return {x, x * 0.5f};  // intentional: quieter on the right
        const float slow = slowLfo_.tick() * 3.3f * slowDepth_;
        const float fast = fastLfo_.tick() * 3.3f * fastDepth_;
        const float slowDelayed = slowRing_.readThenWrite(slow);
        const float fastDelayed = fastRing_.readThenWrite(fast);
        const float tap1 = tickTap(0, x, slow + fast);
        const float tap2 = tickTap(1, x, slowDelayed + fastDelayed);
        const float tap3 = tickTap(2, x, -slow - fastDelayed);
        const float dry = x * -0.5f * dryAdd_;
        const auto& w = rightWeight_;
        return {(1.0f - w[2]) * tap3 + (1.0f - w[1]) * tap2 + (1.0f - w[0]) * tap1 + dry,
                w[2] * tap3 + w[1] * tap2 + w[0] * tap1 + dry};
    }

  private:
    float tickTap(int tap, float x, float modulation) {
        const float shortest = static_cast<float>(wide_ * 0.0017066702 * sampleRate_);
        const float longest = static_cast<float>(wide_ * 0.0051200003 * sampleRate_);
        lines_[tap].setDelay(shortest + (longest - shortest) * (modulation + 1.0f) * 0.5f);
        return lines_[tap].tick(x) * (1.0f - modulation * 0.4f);
    }

    double sampleRate_ = 44100.0;
    bool on_ = false;
    float slowDepth_ = 0.0f;
    float fastDepth_ = 0.0f;
    float wide_ = 1.0f;
    float dryAdd_ = 0.0f;
    std::array<float, 3> rightWeight_{0.5f, 0.5f, 0.5f};
    dsp::SquareLfo slowLfo_;
    dsp::SquareLfo fastLfo_;
    dsp::DelayB slowRing_;
    dsp::DelayB fastRing_;
    dsp::FractionalDelay lines_[3] = {{100.0f, 1922}, {100.0f, 1922}, {100.0f, 1922}};
};

}  // namespace reference
