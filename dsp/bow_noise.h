// Table of band-limited bow noise, shared by all instances in the process.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "dsp/random.h"

namespace dsp {

constexpr std::size_t kBowNoiseSize = 33000;
constexpr int kBowNoiseDraws = 44000;

using BowNoiseTable = std::array<float, kBowNoiseSize>;  // within -1 .. 1

// Draws kBowNoiseDraws numbers from the generator and fills the table.
void buildBowNoise(Random& random, BowNoiseTable& table);

// The table of a fresh generator. The first call builds it, so make that call on a control thread.
const BowNoiseTable& bowNoise();

constexpr std::uint32_t stateAfterBowNoise() {
    Random random;
    for (int i = 0; i < kBowNoiseDraws; ++i) random.next();
    return random.state();
}

// An instance continues the random sequence from where the table left it.
constexpr std::uint32_t kStateAfterTable = stateAfterBowNoise();

}  // namespace dsp
