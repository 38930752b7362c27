// The release time that all envelopes of the engine share.
#pragma once

#include "dsp/voice_envelope.h"

namespace engine {

// Release as the parameter sets it.
//
//     level[n] = level[n-1] x (1 - 1000 / (span x sampleRate))
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

}  // namespace engine
