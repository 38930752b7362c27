// What is asked of every sound of the factory bank, and whether it holds.
#pragma once

#include <string>
#include <vector>

#include "banks/listening.h"
#include "state/bank.h"

namespace banks {

// Loudness of one note and of three at velocity 100 that sounds are set to, in LUFS; the medians
// of the bank.
constexpr double kNoteLoudness = -30.2;
constexpr double kChordLoudness = -25.3;
// The same of a busy passage in both hands, gated.
constexpr double kPassageLoudness = -21.7;

struct Figures {
    double note = 0.0;           // loudness of middle C, LUFS
    double chord = 0.0;          // of C E G, LUFS
    double passage = 0.0;        // of a busy passage, LUFS
    double passagePeak = 0.0;    // dB of full scale
    double hiss = 0.0;           // how far the bow noise lies under that note, dB
    double full = 0.0;           // peak of ten keys at full velocity, dB of full scale
    std::vector<double> levels;  // loudness of keys 36, 40, ... 84, LUFS
    double keys = 0.0;           // loudest against softest key from 48 to 84, dB
    double steepest = 0.0;       // between keys four semitones apart from 36 to 84, dB
    double low = 0.0;            // key 36 against middle C, dB
    double touch = 0.0;          // velocity 120 against 40, dB
    double before = 0.0;         // most that a half-octave band differs after other sounds, dB
    double late = 0.0;           // silence after the end of the release, s
    double rest = 0.0;           // peak after the release, dB of full scale
    double lean = 0.0;           // right against left once the keys are let go, dB
    Edge edge;                   // the sharpest in the phrase
    bool shared = false;         // "Para": one loudness for all keys, which grows with their number
};

// Seconds from letting a key go to a thousandth of its level.
double releaseSeconds(const state::Bank& bank, int program);

Figures measure(const state::Bank& bank, int program);

// Sets the section levels and the volume so that hiss and loudness are as they should be; keeps the
// balance of the levels.
void settle(state::Bank& bank, int program);

// The level and the switch of each section.
constexpr state::ParamIndex kLevels[][2] = {
    {state::kViola, state::kViola2},           {state::kViolin, state::kViolin2},
    {state::kBrass, state::kBrass2},           {state::kHorn, state::kHorn2},
    {state::kContrabass, state::kContrabass2}, {state::kCello, state::kCello2},
};

// What of the figures is out of bounds, in words.
std::vector<std::string> faults(const Figures& figures);

// A bass note, a chord and two notes of melody, let go one after another, then a short low note and
// a soft high one: a picture that two sounds can be told apart by.
Picture phrasePicture(const state::Bank& bank, int program);
constexpr double kLeastDistance = 3.0;

}  // namespace banks
