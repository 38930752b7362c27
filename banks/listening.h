// What a listener would judge about a take, in numbers.
#pragma once

#include <array>
#include <cstddef>

#include "banks/take.h"

namespace banks {

double decibels(double amplitude);

// Highest sample of both sides, in dB of full scale.
double peakDb(const Take& take);

// Loudness after ITU-R BS.1770, in LUFS: of the loudest 0.4 s between two frames, and gated over
// the whole take.
double momentaryLoudness(const Take& take, std::size_t from, std::size_t to);
double integratedLoudness(const Take& take);

// Seconds after which nothing is above -70 dB of full scale.
double silentFrom(const Take& take);

// Right against left between two frames, in dB.
double leanDb(const Take& take, std::size_t from, std::size_t to);

// How far the sharpest edge after a frame stands out of the music before it, in dB, and where.
struct Edge {
    double db = 0.0;
    double seconds = 0.0;
};
Edge sharpestEdge(const Take& take, std::size_t from);

// Levels of half-octave bands from 62 Hz on.
constexpr int kBands = 16;

// Of the whole take, both sides together, in dB below the loudest band.
std::array<double, kBands> bandsDb(const Take& take);

// In dB, over time, of both sides, at equal loudness.
constexpr int kFrames = 48;  // of 0.1 s
using Picture = std::array<float, 2 * kBands * kFrames>;
Picture picture(const Take& take);

// Root mean square of the differences of two pictures, in dB.
double distanceDb(const Picture& a, const Picture& b);

}  // namespace banks
