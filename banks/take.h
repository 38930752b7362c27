// Plays notes on an instrument and keeps what it sounds like.
#pragma once

#include <cstddef>
#include <vector>

#include "state/instrument.h"

namespace banks {

constexpr double kSampleRate = 44100.0;

constexpr std::size_t frameAt(double seconds) {
    return static_cast<std::size_t>(seconds * kSampleRate);
}

struct Note {
    double on, off;  // s
    int key, velocity;
};

struct Take {
    std::vector<float> left;
    std::vector<float> right;

    std::size_t frames() const { return left.size(); }
};

// Renders `seconds` from now on, with the notes in it. The instrument works at kSampleRate.
Take play(state::Instrument& instrument, const std::vector<Note>& notes, double seconds);

// Sends a program to the engine until "HP", which walks half way each time, has arrived.
void choose(state::Instrument& instrument, int program);

}  // namespace banks
