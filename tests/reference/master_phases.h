// The twelve phase accumulators that all voices share, in turns (0..1).
#pragma once

#include <array>

#include "engine/pitch.h"

namespace reference {

class MasterPhases {
  public:
    void advance(double bendRatio, double sampleRate) {
        for (int s = 0; s < engine::kSemitones; ++s) {
            phase_[s] += bendRatio * engine::kMasterFrequencies[s] / sampleRate;
            if (phase_[s] >= 1.0) phase_[s] -= 1.0;
        }
    }
    double operator[](int semitone) const { return phase_[semitone]; }

  private:
    std::array<double, engine::kSemitones> phase_{};
};

}  // namespace reference
