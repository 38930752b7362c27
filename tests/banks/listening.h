// Plays a fixed phrase on one program and measures what a listener would judge.
#pragma once

#include <array>
#include <vector>

#include "tests/support/played_instrument.h"

namespace listening {

constexpr double kSampleRate = 44100.0;

// When things happen in the phrase, in seconds: a bass note and a chord, two melody notes above
// them, then the melody, the chord and the bass let go one after another.
constexpr double kLastNoteOn = 0.65;
constexpr double kMelodyOff = 1.7;
constexpr double kChordOff = 2.0;
constexpr double kBassOff = 2.3;

// Both sides from the first note until nothing is heard for a while, or until patience ends.
struct Take {
    std::vector<float> left;
    std::vector<float> right;
    bool endedInSilence = false;
};

Take playPhrase(PlayedInstrument& instrument);

// Highest sample of both sides, in dB of full scale.
double peakDb(const Take& take);

// Root mean square of the loudest 0.4 s while notes are held, both sides together, in dB of full
// scale.
double loudnessDb(const Take& take);

// How far the sharpest edge stands out of the music before it, in dB, and where; looked for from
// the moment when all notes are under way until the end.
struct Edge {
    double db = 0.0;
    double seconds = 0.0;
};
Edge sharpestEdge(const Take& take);

// Levels in dB of half-octave bands over time, both sides, at equal loudness.
constexpr int kBands = 16;
constexpr int kFrames = 30;  // of 0.1 s
using Picture = std::array<float, 2 * kBands * kFrames>;
Picture picture(const Take& take);

// Root mean square of the differences of two pictures, in dB.
double distanceDb(const Picture& a, const Picture& b);

}  // namespace listening
