// Plays notes on an instrument and keeps what it sounds like.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "instrument/instrument.h"

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
Take play(instrument::Instrument& instrument, const std::vector<Note>& notes, double seconds);

// An instrument with this bank, at kSampleRate.
std::unique_ptr<instrument::Instrument> instrumentWith(const state::Bank& bank);

// Sends a program to the engine until "HP", which walks half way each time, has arrived.
void choose(instrument::Instrument& instrument, int program);

}  // namespace banks
