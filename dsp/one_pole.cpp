// Settings of the one-pole.
#include "dsp/one_pole.h"

#include "dsp/finite.h"

namespace dsp {

float cornerCoefficient(double hz, double sampleRate) {
    return static_cast<float>(6.28319 / sampleRate * hz);
}

void OnePole::reset() {
    state_ = 0.0f;
    coefficient_ = 1.0f;
    sampleRate_ = 44100.0f;
}

void OnePole::setRate(float sampleRate) {
    if (isUsableRate(sampleRate)) sampleRate_ = sampleRate;
}

void OnePole::setFrequency(float hz) {
    setCoefficient(cornerCoefficient(hz, sampleRate_));
}

void OnePole::setCoefficient(float coefficient) {
    assignLimited(coefficient_, coefficient, 0.0f, 1.9f);
}

}  // namespace dsp
