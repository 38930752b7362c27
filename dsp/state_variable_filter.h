// Chamberlin state-variable filter: low-pass of 12 or 24 dB per octave, or one band-pass stage.
#pragma once

#include "dsp/finite.h"
#include "dsp/stereo.h"

namespace dsp {

// One stage:
//
//     band += g (x - k band - low)
//     low  += g band
//
// Value is float, or StereoFloat for several filters side by side.
template <typename Value>
struct StateVariableStage {
    Value band{};
    Value low{};

    void tick(Value x, float g, float k) {
        const Value newBand = (x - (band * k + low)) * g + band;
        const Value newLow = newBand * g + low;
        band = flushed(newBand);
        low = flushed(newLow);
    }
    // Copies the states of the lanes whose mask is set.
    template <typename Mask>
    void keep(const StateVariableStage& from, Mask on) {
        band = select(on, from.band, band);
        low = select(on, from.low, low);
    }
};

// Non-finite settings and rates of 0 or less are ignored.
class StateVariableFilter {
  public:
    static constexpr float kInitialCoefficient = 0.926f;
    static constexpr float kInitialDamping = 1.0f;

    void reset();                             // back to the constructed state
    void clear();                             // state only; settings stay
    void setRate(float sampleRate);           // Hz; takes effect with the next setCutoff
    void setCutoff(float hz);                 // coefficient limited to 0.03..0.998
    void setCoefficient(float coefficient) {  // the same limits
        assignLimited(g_, coefficient, 0.03f, 0.998f);
    }
    void setResonance(float resonance);           // limited to 0.3..0.93
    void setShape(float makeUp, float damping);   // both unlimited
    void setPoles(int poles) { poles_ = poles; }  // 2 runs one stage, any other value both

    float coefficient() const { return g_; }
    float damping() const { return k_; }
    float makeUp() const { return makeUp_; }  // for the caller to apply; the filter does not

    float process(float x) {
        first_.tick(x, g_, k_);
        if (poles_ == 2) return first_.low;
        second_.tick(first_.low, g_, k_);
        return second_.low;
    }

    float processBandPass(float x) {
        first_.tick(x, g_, k_);
        return first_.band;
    }

  private:
    StateVariableStage<float> first_;
    StateVariableStage<float> second_;
    float g_ = kInitialCoefficient;
    float k_ = kInitialDamping;
    float makeUp_ = 1.0f;
    float sampleRate_ = 44100.0f;
    int poles_ = 4;
};

}  // namespace dsp
