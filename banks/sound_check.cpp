#include "banks/sound_check.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

namespace banks {

namespace {

constexpr int kVelocity = 100;

// The phrase, in seconds.
constexpr double kLastNoteOn = 0.65;
constexpr double kPhraseEnd = 2.3;
const std::vector<Note> kPhrase = {
    {0.0, kPhraseEnd, 43, kVelocity}, {0.0, 2.0, 60, kVelocity},  {0.0, 2.0, 64, kVelocity},
    {0.0, 2.0, 67, kVelocity},        {0.0, 2.0, 71, kVelocity},  {0.25, 0.6, 72, kVelocity},
    {kLastNoteOn, 1.7, 76, kVelocity}};

std::unique_ptr<state::Instrument> instrumentOf(const state::Bank& bank, int program) {
    auto instrument = std::make_unique<state::Instrument>(kSampleRate);
    instrument->bank() = bank;
    choose(*instrument, program);
    return instrument;
}

double attackSeconds(const state::Bank& bank, int program) {
    const double v = bank.value(program, state::kEnvAttack);
    return v * v * v * v * 10.0;
}

// Keys held together for so long, from a silent start.
Take hold(state::Instrument& instrument, const std::vector<int>& keys, int velocity,
          double seconds) {
    instrument.setProgram(instrument.program());
    std::vector<Note> notes;
    for (const int key : keys) notes.push_back({0.0, seconds, key, velocity});
    return play(instrument, notes, seconds);
}

double loudnessOf(const Take& take) {
    return momentaryLoudness(take, 0, take.frames());
}

void measureKeys(state::Instrument& instrument, double seconds, Figures& figures) {
    double lowest = 0.0, highest = 0.0, previous = 0.0;
    for (int key = 36; key <= 84; key += 4) {
        const double level = loudnessOf(hold(instrument, {key}, kVelocity, seconds));
        if (key == 36) figures.low = level;
        if (key == 60) figures.low -= level;
        if (key > 36) figures.steepest = std::max(figures.steepest, std::fabs(level - previous));
        if (key <= 48) lowest = highest = level;
        lowest = std::min(lowest, level);
        highest = std::max(highest, level);
        previous = level;
    }
    figures.keys = highest - lowest;
}

double hissLoudness(const state::Bank& bank, int program) {
    const auto instrument = std::make_unique<state::Instrument>(kSampleRate);
    instrument->bank() = bank;
    for (int index = state::kViola2; index <= state::kCello2; ++index) {
        instrument->bank().setValue(program, index, 0.0f);
    }
    choose(*instrument, program);
    return loudnessOf(hold(*instrument, {60}, kVelocity, 1.0));
}

// Programs with the lowest and the highest "HP", the one value that is still under way after a
// change, and one more.
std::vector<int> programsBefore(const state::Bank& bank, int program) {
    const auto less = [&bank](int a, int b) {
        return bank.value(a, state::kHP) < bank.value(b, state::kHP);
    };
    std::vector<int> all(state::kNumPrograms);
    for (int i = 0; i < state::kNumPrograms; ++i) all[i] = i;
    const auto [lowest, highest] = std::minmax_element(all.begin(), all.end(), less);
    return {*lowest, *highest, (program * 37 + 11) % state::kNumPrograms};
}

double differenceAfterOthers(const state::Bank& bank, int program, double seconds) {
    constexpr double kHeard = -30.0;  // dB below the loudest band
    const auto bandsAfter = [&](int other) {
        const auto instrument = instrumentOf(bank, other);
        instrument->setProgram(program);
        return bandsDb(hold(*instrument, {60, 64, 67}, kVelocity, seconds));
    };
    const auto own = bandsAfter(program);
    double most = 0.0;
    for (const int other : programsBefore(bank, program)) {
        const auto bands = bandsAfter(other);
        for (int i = 0; i < kBands; ++i) {
            if (own[i] > kHeard) most = std::max(most, std::fabs(own[i] - bands[i]));
        }
    }
    return most;
}

Take phrase(state::Instrument& instrument, double seconds) {
    instrument.setProgram(instrument.program());
    return play(instrument, kPhrase, seconds);
}

}  // namespace

double releaseSeconds(const state::Bank& bank, int program) {
    const double v = bank.value(program, state::kEnvRelease);
    return 6.91 * ((v * v + 0.005) * 2.0 + 0.015);
}

Figures measure(const state::Bank& bank, int program) {
    Figures figures;
    const auto instrument = instrumentOf(bank, program);
    const double attack = attackSeconds(bank, program);
    const double release = releaseSeconds(bank, program);

    const double held = std::max(1.8, attack + 1.2);
    figures.note = loudnessOf(hold(*instrument, {60}, kVelocity, held));
    figures.chord = loudnessOf(hold(*instrument, {60, 64, 67}, kVelocity, held));
    figures.hiss = figures.note - hissLoudness(bank, program);
    figures.full = peakDb(
        hold(*instrument, {36, 43, 48, 52, 55, 60, 64, 67, 72, 76}, 127, attack + 0.6));
    measureKeys(*instrument, attack + 0.6, figures);
    figures.touch = loudnessOf(hold(*instrument, {60}, 120, attack + 0.5)) -
                    loudnessOf(hold(*instrument, {60}, 40, attack + 0.5));
    figures.before = differenceAfterOthers(bank, program, attack + 0.6);

    const Take whole = phrase(*instrument, kPhraseEnd + release + 2.5);
    figures.late = silentFrom(whole) - kPhraseEnd - release;
    figures.edge = sharpestEdge(whole, frameAt(kLastNoteOn + 0.05));
    figures.lean =
        leanDb(whole, frameAt(kPhraseEnd), frameAt(kPhraseEnd + std::max(0.3, 0.5 * release)));
    return figures;
}

std::vector<std::string> faults(const Figures& figures) {
    struct Bound {
        const char* what;
        double value, lowest, highest;
    };
    const Bound bounds[] = {
        {"loudness of a note", figures.note, kNoteLoudness - 3.0, kNoteLoudness + 3.0},
        {"loudness of a chord", figures.chord, kChordLoudness - 2.5, kChordLoudness + 2.5},
        {"distance of the hiss", figures.hiss, 18.0, 120.0},
        {"peak of ten keys", figures.full, -30.0, -1.0},
        {"range over the keys", figures.keys, 0.0, 10.0},
        {"difference after other sounds", figures.before, 0.0, 2.0},
        {"silence after the release", figures.late, -60.0, 1.0},
        {"sharpest edge", figures.edge.db, 0.0, 7.0},
    };
    std::vector<std::string> found;
    for (const Bound& bound : bounds) {
        if (bound.value >= bound.lowest && bound.value <= bound.highest) continue;
        char text[96];
        std::snprintf(text, sizeof text, "%s: %.1f, not %.1f to %.1f", bound.what, bound.value,
                      bound.lowest, bound.highest);
        found.emplace_back(text);
    }
    return found;
}

Picture phrasePicture(const state::Bank& bank, int program) {
    return picture(phrase(*instrumentOf(bank, program), 0.1 * kFrames));
}

}  // namespace banks
