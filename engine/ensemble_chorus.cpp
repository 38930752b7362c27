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

std::array<float*, EnsembleChorus::kTaps> rows(std::array<Signal, EnsembleChorus::kTaps>& signals) {
    return {signals[0].data(), signals[1].data(), signals[2].data()};
}
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

const dsp::BesidePhases* EnsembleChorus::begin(Run& run, int frames) {
    run.modulators.reset();
    if (!on_ || !slowLfo_.holds(frames) || !fastLfo_.holds(frames)) return nullptr;
    run.modulators.emplace(dsp::BesidePhases{slowLfo_, fastLfo_, run.slow.data(), run.fast.data()});
    return &*run.modulators;
}

void EnsembleChorus::modulate(Run& run, int frames) {
    if (!on_) return;
    Signal& slow = run.slow;
    Signal& fast = run.fast;
    if (run.modulators) {
        slowLfo_.skip(frames);
        fastLfo_.skip(frames);
    } else {
        for (int t = 0; t < frames; ++t) slow[t] = slowLfo_.tick();
        for (int t = 0; t < frames; ++t) fast[t] = fastLfo_.tick();
    }
    const auto modulateTaps = [&](float depth, float slowDepth, float fastDepth, float* slowDelayed,
                                  float* fastDelayed) {
        kernels_.modulateTaps({slow.data(), fast.data(), depth, slowDepth, fastDepth, slowDelayed,
                               fastDelayed, shortestDelay(), longestDelay(), rows(run.delays),
                               rows(run.gains), frames});
    };
    float* const slowRow = slowRing_.row(frames);
    float* const fastRow = fastRing_.row(frames);
    if (slowRow && fastRow) {
        modulateTaps(kModulationDepth, slowDepth_, fastDepth_, slowRow, fastRow);
        slowRing_.skip(frames);
        fastRing_.skip(frames);
        return;
    }
    // At low rates a ring is shorter than the segment, so what leaves it may just have entered.
    Signal slowDelayed{}, fastDelayed{};
    for (int t = 0; t < frames; ++t) {
        slowDelayed[t] = slow[t] = slow[t] * kModulationDepth * slowDepth_;
        fastDelayed[t] = fast[t] = fast[t] * kModulationDepth * fastDepth_;
    }
    slowRing_.exchange(slowDelayed.data(), frames);
    fastRing_.exchange(fastDelayed.data(), frames);
    modulateTaps(1.0f, 1.0f, 1.0f, slowDelayed.data(), fastDelayed.data());
}

void EnsembleChorus::render(Run& run, const Signal& in, SegmentPart part, StereoSignal& out) {
    const int from = part.from;
    if (!on_) {
        for (int t = from; t < from + part.frames; ++t) {
            out.left[t] = in[t];
            out.right[t] = in[t] * 0.5f;  // intentional: quieter on the right
        }
        return;
    }
    for (int tap = 0; tap < kTaps; ++tap) {
        lines_[tap].sweep(&run.delays[tap][from], &in[from], &run.taps[tap][from], part.frames);
    }
    mix(run, &in[from], part, out);
}

bool EnsembleChorus::renderTaps(Run& run, SegmentPart part, StereoSignal& out) {
    if (!on_) return false;
    const int from = part.from;
    std::array<dsp::FractionalDelay::Places, kTaps> places;
    for (int tap = 0; tap < kTaps; ++tap) {
        if (!lines_[tap].placeAhead(&run.delays[tap][from], part.frames, places[tap])) return false;
    }
    for (int tap = 0; tap < kTaps; ++tap) {
        lines_[tap].readPlaced(&run.delays[tap][from], places[tap], &run.taps[tap][from],
                               part.frames);
    }
    mix(run, nullptr, part, out);
    return true;
}

void EnsembleChorus::feed(const Signal& in, SegmentPart part) {
    for (dsp::FractionalDelay& line : lines_) line.write(&in[part.from], part.frames);
}

void EnsembleChorus::mix(const Run& run, const float* in, SegmentPart part, StereoSignal& out) {
    const int from = part.from;
    kernels_.mixTaps({in,
                      dryAdd_,
                      {&run.taps[0][from], &run.taps[1][from], &run.taps[2][from]},
                      {&run.gains[0][from], &run.gains[1][from], &run.gains[2][from]},
                      rightWeight_,
                      &out.left[from],
                      &out.right[from],
                      part.frames});
}

}  // namespace engine
