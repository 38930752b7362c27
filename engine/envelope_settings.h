// What the engine's envelopes share: release times and the velocity curve.
#pragma once

#include "dsp/voice_envelope.h"

namespace engine {

// Release as the parameter gives it: the factor of one sample is 1 - 1000 / (span x rate).
struct ReleaseTime {
    double span = 25.0;

    float factor(double sampleRate) const {
        return static_cast<float>(1.0 - 1000.0 / (span * sampleRate));
    }
    // To a thousandth of the level, but for rounding at any rate.
    constexpr double seconds() const { return span * 6.907755279 / 1000.0; }
    void applyTo(dsp::VoiceEnvelope& envelope, double sampleRate) const {
        envelope.setReleaseFactor(factor(sampleRate));
        envelope.computeRates();
    }
};

// Peak of an envelope for a velocity of 1..127; `amount` is 0..1.
inline float velocityPeak(int velocity, float amount) {
    const float v = static_cast<float>(velocity);
    return v * v * amount * 6.200012e-05f + (1.0f - amount);
}

}  // namespace engine
