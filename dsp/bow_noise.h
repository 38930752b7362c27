// Table of band-limited noise for the sound of the bow, shared by all instances of the process.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "dsp/random.h"

namespace dsp {

constexpr std::size_t kBowNoiseSize = 33000;
constexpr int kBowNoiseDraws = 44000;

using BowNoiseTable = std::array<float, kBowNoiseSize>;  // within -1 .. 1

// Fills the table from kBowNoiseDraws numbers of the generator.
void buildBowNoise(Random& random, BowNoiseTable& table);

// The table that a fresh generator gives. Built at the first call, which therefore belongs on a
// control thread; read-only afterwards.
const BowNoiseTable& bowNoise();

constexpr std::uint32_t stateAfterBowNoise() {
    Random random;
    for (int i = 0; i < kBowNoiseDraws; ++i) random.next();
    return random.state();
}

// State of a fresh generator after the draws for the table: where an instance goes on.
constexpr std::uint32_t kStateAfterTable = stateAfterBowNoise();

}  // namespace dsp
