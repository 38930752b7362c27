// Chamberlin state-variable filter: low-pass of 12 or 24 dB an octave, or one band-pass stage.
#pragma once

#include "dsp/denormal.h"

namespace dsp {

// Non-finite settings and rates of 0 or less are ignored.
class StateVariableFilter {
  public:
    void reset();                            // everything as constructed
    void clear();                            // state only; settings stay
    void setRate(float sampleRate);          // Hz, for the next setCutoff
    void setCutoff(float hz);                // coefficient limited to 0.03..0.998
    void setCoefficient(float coefficient);  // the same limits
    void setResonance(float resonance);      // limited to 0.3..0.93
    void setShape(float makeUp, float damping);
    void setPoles(int poles) { poles_ = poles; }  // 2: one stage; any other value: both

    float coefficient() const { return g_; }
    float damping() const { return k_; }
    float makeUp() const { return makeUp_; }  // gain a caller may apply; the filter does not

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
    struct Stage {
        float band = 0.0f;
        float low = 0.0f;

        void tick(float x, float g, float k) {
            const float newBand = (x - (band * k + low)) * g + band;
            const float newLow = newBand * g + low;
            band = flushed(newBand);
            low = flushed(newLow);
        }
    };

    Stage first_;
    Stage second_;
    float g_ = 0.926f;
    float k_ = 1.0f;
    float makeUp_ = 1.0f;
    float sampleRate_ = 44100.0f;
    int poles_ = 4;
};

}  // namespace dsp
