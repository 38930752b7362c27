// Modulation and taps of the ensemble chorus.
#include "engine/ensemble_chorus.h"

namespace engine {

namespace {
constexpr double kSlowHertz = 0.86;
constexpr double kFastHertz = 6.5;
constexpr double kSlowRingSeconds = 0.3875968927775759;   // a third of the slow period
constexpr double kFastRingSeconds = 0.05128205128205128;  // a third of the fast period
constexpr float kModulationDepth = 3.3f;
constexpr double kShortestSeconds = 0.0017066702;
constexpr double kLongestSeconds = 0.0051200003;
constexpr float kInitialDelaySamples = 100.0f;
constexpr int kLineCapacity = 1922;  // samples
}  // namespace

EnsembleChorus::EnsembleChorus()
    : fastRing_(static_cast<int>(kHighestRate * kFastRingSeconds)),
      lines_{dsp::FractionalDelay(kInitialDelaySamples, kLineCapacity),
             dsp::FractionalDelay(kInitialDelaySamples, kLineCapacity),
             dsp::FractionalDelay(kInitialDelaySamples, kLineCapacity)} {
    slowLfo_.setFrequency(kSlowHertz);
    fastLfo_.setFrequency(kFastHertz);
    setRate(sampleRate_);
}

void EnsembleChorus::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    clearModulators();
    slowLfo_.setRate(sampleRate);
    fastLfo_.setRate(sampleRate);
    slowRing_.setLength(static_cast<int>(sampleRate * kSlowRingSeconds));
    fastRing_.setLength(static_cast<int>(sampleRate * kFastRingSeconds));
    slowRing_.clear();
    fastRing_.clear();
    for (dsp::FractionalDelay& line : lines_) line.reset();
}

void EnsembleChorus::setStereo(float amount) {
    rightWeight_ = {0.5f + 0.5f * amount, 0.5f - 0.5f * amount, 0.5f};
}

void EnsembleChorus::clearModulators() {
    slowLfo_.clear();
    fastLfo_.clear();
}

float EnsembleChorus::shortestDelay() const {
    return static_cast<float>(wide_ * kShortestSeconds * sampleRate_);
}

float EnsembleChorus::longestDelay() const {
    return static_cast<float>(wide_ * kLongestSeconds * sampleRate_);
}

float EnsembleChorus::tapPosition(int tap) const {
    const float shortest = shortestDelay();
    return (lines_[tap].delay() - shortest) / (longestDelay() - shortest);
}

void EnsembleChorus::renderTap(int tap, const Signal& modulation, int frames, Signal& signal) {
    const float shortest = shortestDelay();
    const float longest = longestDelay();
    Signal delays{};
    for (int t = 0; t < frames; ++t) {
        delays[t] = shortest + (longest - shortest) * (modulation[t] + 1.0f) * 0.5f;
    }
    lines_[tap].sweep(delays.data(), signal.data(), frames);
    for (int t = 0; t < frames; ++t) signal[t] *= 1.0f - modulation[t] * 0.4f;
}

void EnsembleChorus::render(const Signal& in, int frames, StereoSignal& out) {
    if (!on_) {
        for (int t = 0; t < frames; ++t) {
            out.left[t] = in[t];
            out.right[t] = in[t] * 0.5f;  // intentional: quieter on the right
        }
        return;
    }
    Signal slow, fast, slowDelayed, fastDelayed;
    dsp::SquareLfo slowLfo = slowLfo_;
    dsp::SquareLfo fastLfo = fastLfo_;
    for (int t = 0; t < frames; ++t) {
        slow[t] = slowLfo.tick();
        fast[t] = fastLfo.tick();
    }
    slowLfo_ = slowLfo;
    fastLfo_ = fastLfo;
    for (int t = 0; t < frames; ++t) {
        slowDelayed[t] = slow[t] = slow[t] * kModulationDepth * slowDepth_;
        fastDelayed[t] = fast[t] = fast[t] * kModulationDepth * fastDepth_;
    }
    slowRing_.exchange(slowDelayed.data(), frames);
    fastRing_.exchange(fastDelayed.data(), frames);

    std::array<Signal, kTaps> modulations;
    for (int t = 0; t < frames; ++t) {
        modulations[0][t] = slow[t] + fast[t];
        modulations[1][t] = slowDelayed[t] + fastDelayed[t];
        modulations[2][t] = -slow[t] - fastDelayed[t];
    }
    std::array<Signal, kTaps> taps = {in, in, in};
    for (int tap = 0; tap < kTaps; ++tap) renderTap(tap, modulations[tap], frames, taps[tap]);

    const auto& w = rightWeight_;
    for (int t = 0; t < frames; ++t) {
        const float dry = in[t] * -0.5f * dryAdd_;
        out.left[t] = (1.0f - w[2]) * taps[2][t] + (1.0f - w[1]) * taps[1][t] +
                      (1.0f - w[0]) * taps[0][t] + dry;
        out.right[t] = w[2] * taps[2][t] + w[1] * taps[1][t] + w[0] * taps[0][t] + dry;
    }
}

}  // namespace engine
