// Turns MIDI keys into pitches: twelve master frequencies, and octaves above them.
#pragma once

#include <array>

#include "engine/segment.h"

namespace engine {

constexpr int kSemitones = dsp::kPhases;

// C0 to B0 in Hz. Every pitch of the instrument is one of these times a power of two.
constexpr std::array<double, kSemitones> kMasterFrequencies = {
    16.35159783132, 17.32391443612, 18.35404799481, 19.44543648262, 20.60172230711, 21.82676446462,
    23.12465141952, 24.49971474862, 25.95654359872, 27.50000000001, 29.13523509492, 30.86770632852};

constexpr int kLowestKey = 12;
constexpr int kHighestKey = 115;

constexpr bool isPlayableKey(int key) {
    return key >= kLowestKey && key <= kHighestKey;
}

struct Pitch {
    int semitone = 0;           // 0..11, index of the master phase
    double octaveFactor = 1.0;  // 1, 2, 4 ... 128

    double hertz() const { return kMasterFrequencies[semitone] * octaveFactor; }
};

// Semitones above C0 at which a playable key sounds, 0..91. Keys from 97 on sound an octave lower.
constexpr int upperKeyIndex(int key) {
    return key <= 96 ? key - 12 : key - 24;
}

// `semitones` counts from C0, 0..95.
Pitch pitchFromIndex(int semitones);

// Corner of a voice's key high-pass: one octave above the pitch of its key index.
float keyHighPassHertz(int index);

constexpr float kLowestKeyHighPassHertz = 32.703196f;  // C1

// One segment of the twelve phases that all voices share.
struct PhaseRows {
    // 0..1, padded for the lane kernels.
    alignas(dsp::kVectorBytes) std::array<float, kLongestSegment * dsp::kPaddedPhases> rounded{};
    // The same before rounding, for those who ask for it.
    std::array<std::array<double, kSemitones>, kLongestSegment> turns;
};

class MasterPhases {
  public:
    // Fills in a segment, its `turns` only if asked to, and carries out `beside` unless it is null.
    void render(double bendRatio, double sampleRate, int frames, PhaseRows& rows, bool withTurns,
                const dsp::BesidePhases* beside);

  private:
    const dsp::Kernels& kernels_ = dsp::kernels();
    std::array<double, kSemitones> phase_{};
};

}  // namespace engine
