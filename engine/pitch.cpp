// Octaves and key high-pass corners.
#include "engine/pitch.h"

#include <algorithm>
#include <cmath>

namespace engine {

Pitch pitchFromIndex(int semitones) {
    const int octave = std::clamp(semitones / kSemitones, 0, 7);
    return {std::clamp(semitones - kSemitones * octave, 0, kSemitones - 1),
            static_cast<double>(1 << octave)};
}

float keyHighPassHertz(int index) {
    const double bounded = std::clamp(index, 0, 103);
    return static_cast<float>(kLowestKeyHighPassHertz * std::exp2(bounded / kSemitones));
}

void MasterPhases::render(double bendRatio, double sampleRate, int frames, PhaseRows& rows,
                          bool withTurns, const dsp::BesidePhases* beside) {
    std::array<double, kSemitones> step;
    for (int s = 0; s < kSemitones; ++s) step[s] = bendRatio * kMasterFrequencies[s] / sampleRate;
    kernels_.runPhases({phase_.data(), step.data(), withTurns ? rows.turns[0].data() : nullptr,
                        rows.rounded.data(), beside, frames});
}

}  // namespace engine
