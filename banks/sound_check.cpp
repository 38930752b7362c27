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
const std::vector<Note> kPhrase = {{0.0, kPhraseEnd, 43, kVelocity}, {0.0, 2.0, 60, kVelocity},
                                   {0.0, 2.0, 64, kVelocity},        {0.0, 2.0, 67, kVelocity},
                                   {0.0, 2.0, 71, kVelocity},        {0.25, 0.6, 72, kVelocity},
                                   {kLastNoteOn, 1.7, 76, kVelocity}};

// What follows it in a picture: a short low note and a soft high one.
const std::vector<Note> kAfterPhrase = {{3.0, 3.4, 36, kVelocity}, {3.9, 4.1, 79, 40}};

std::unique_ptr<instrument::Instrument> instrumentOf(const state::Bank& bank, int program) {
    auto instrument = instrumentWith(bank);
    choose(*instrument, program);
    return instrument;
}

double attackSeconds(const state::Bank& bank, int program) {
    const double v = bank.value(program, state::kEnvAttack);
    return v * v * v * v * 10.0;
}

// Keys held together for so long, from a silent start.
Take hold(instrument::Instrument& instrument, const std::vector<int>& keys, int velocity,
          double seconds) {
    instrument.setProgram(instrument.program());
    std::vector<Note> notes;
    for (const int key : keys) notes.push_back({0.0, seconds, key, velocity});
    return play(instrument, notes, seconds);
}

double loudnessOf(const Take& take) {
    return momentaryLoudness(take, 0, take.frames());
}

void measureKeys(instrument::Instrument& instrument, double seconds, Figures& figures) {
    constexpr int kFirstKey = 36, kStep = 4, kLastKey = 84;
    std::vector<double>& levels = figures.levels;
    for (int key = kFirstKey; key <= kLastKey; key += kStep) {
        levels.push_back(loudnessOf(hold(instrument, {key}, kVelocity, seconds)));
        const std::size_t count = levels.size();
        if (count < 2) continue;
        figures.steepest =
            std::max(figures.steepest, std::fabs(levels[count - 1] - levels[count - 2]));
    }
    figures.low = levels.front() - levels[(60 - kFirstKey) / kStep];
    const auto [lowest, highest] =
        std::minmax_element(levels.begin() + (48 - kFirstKey) / kStep, levels.end());
    figures.keys = *highest - *lowest;
}

const std::vector<int> kTenKeys = {36, 43, 48, 52, 55, 60, 64, 67, 72, 76};

// Four seconds of busy playing in both hands, with short low notes on every beat.
Take passage(instrument::Instrument& instrument) {
    constexpr int kChords[][4] = {
        {57, 60, 64, 69}, {53, 57, 60, 65}, {55, 59, 62, 67}, {52, 56, 59, 64}};
    constexpr int kBass[] = {33, 29, 31, 28};
    constexpr int kMelody[] = {76, 72, 69, 72, 77, 74, 72, 69, 79, 74, 71, 74, 80, 76, 71, 68};
    constexpr double kBeat = 0.5;  // s
    std::vector<Note> notes;
    for (int bar = 0; bar < 4; ++bar) {
        for (int half = 0; half < 2; ++half) {
            const double at = (2 * bar + half) * kBeat;
            for (const int key : kChords[bar]) notes.push_back({at, at + 0.8 * kBeat, key, 85});
            const int octave = 12 * half;
            notes.push_back({at, at + 0.9 * kBeat, kBass[bar] + octave, 105});
            notes.push_back({at, at + 0.1, 36, 110});
            notes.push_back({at + 0.5 * kBeat, at + 0.5 * kBeat + 0.1, 42, 90});
            for (int eighth = 0; eighth < 2; ++eighth) {
                const double on = at + eighth * 0.5 * kBeat;
                notes.push_back({on, on + 0.45 * kBeat, kMelody[4 * bar + 2 * half + eighth], 100});
            }
        }
    }
    instrument.setProgram(instrument.program());
    return play(instrument, notes, 8 * kBeat);
}

Take tenKeys(const state::Bank& bank, int program) {
    const auto instrument = instrumentOf(bank, program);
    return hold(*instrument, kTenKeys, 127, attackSeconds(bank, program) + 0.6);
}

double hissLoudness(const state::Bank& bank, int program) {
    state::Bank silent = bank;
    for (int index = state::kViola2; index <= state::kCello2; ++index) {
        silent.setValue(program, index, 0.0f);
    }
    const auto instrument = instrumentWith(silent);
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
    constexpr double kWalk = 0.3;     // s; the brightness walks so long after a program change
    const auto bandsAfter = [&](int other) {
        const auto instrument = instrumentOf(bank, other);
        instrument->setProgram(program);
        const double end = kWalk + seconds;
        return bandsDb(play(
            *instrument,
            {{kWalk, end, 60, kVelocity}, {kWalk, end, 64, kVelocity}, {kWalk, end, 67, kVelocity}},
            end));
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

// From letting go to the end of the phrase's last voice.
double voiceSeconds(const state::Bank& bank, int program) {
    const double amount = bank.value(program, state::kVelocityAmp) * 0.998 + 0.001;
    const double touch = kVelocity / 127.0;
    const double level =
        (touch * touch * amount + 1.0 - amount) * bank.value(program, state::kEnvSustain);
    return releaseSeconds(bank, program) * std::log(level * 1000.0) / std::log(1000.0);
}

Take part(const Take& take, double from, double to) {
    const auto first = static_cast<std::ptrdiff_t>(frameAt(std::max(from, 0.0)));
    const auto last = static_cast<std::ptrdiff_t>(
        std::min<double>(static_cast<double>(take.frames()), to * kSampleRate));
    return {{take.left.begin() + first, take.left.begin() + last},
            {take.right.begin() + first, take.right.begin() + last}};
}

Take phrase(instrument::Instrument& instrument, double seconds) {
    instrument.setProgram(instrument.program());
    return play(instrument, kPhrase, seconds);
}

double restDb(const state::Bank& bank, int program) {
    const double end = kPhraseEnd + voiceSeconds(bank, program);
    const Take take = phrase(*instrumentOf(bank, program), end + 0.5);
    return peakDb(part(take, end - 0.002, end + 0.5));
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
    figures.shared = bank.value(program, state::kConfigs) > 0.5f;

    const double held = std::max(1.8, attack + 1.2);
    figures.note = loudnessOf(hold(*instrument, {60}, kVelocity, held));
    figures.chord = loudnessOf(hold(*instrument, {60, 64, 67}, kVelocity, held));
    const Take busy = passage(*instrument);
    figures.passage = integratedLoudness(busy);
    figures.passagePeak = peakDb(busy);
    figures.hiss = figures.note - hissLoudness(bank, program);
    figures.full = peakDb(tenKeys(bank, program));
    measureKeys(*instrument, attack + 0.6, figures);
    figures.touch = loudnessOf(hold(*instrument, {60}, 120, attack + 0.5)) -
                    loudnessOf(hold(*instrument, {60}, 40, attack + 0.5));
    figures.before = differenceAfterOthers(bank, program, attack + 0.6);

    const Take whole = phrase(*instrument, kPhraseEnd + release + 2.5);
    figures.late = silentFrom(whole) - kPhraseEnd - release;
    const double end = kPhraseEnd + voiceSeconds(bank, program);
    figures.rest = peakDb(part(whole, end - 0.002, 1e9));
    figures.edge = sharpestEdge(part(whole, 0.0, end - 0.01), frameAt(kPhraseEnd));
    figures.lean =
        leanDb(whole, frameAt(kPhraseEnd), frameAt(kPhraseEnd + std::max(0.3, 0.5 * release)));
    return figures;
}

namespace {

bool sounds(const state::Bank& bank, int program, state::ParamIndex onOff) {
    return bank.value(program, onOff) > 0.5f;
}

void setRounded(state::Bank& bank, int program, int index, double value) {
    const double bounded = std::clamp(value, 0.0, 1.0);
    bank.setValue(program, index, static_cast<float>(std::round(bounded * 1000.0) / 1000.0));
}

void scale(state::Bank& bank, int program, int index, double factor) {
    setRounded(bank, program, index, bank.value(program, index) * factor);
}

// The first key above the bass.
int splitKey(const state::Bank& bank, int program) {
    constexpr int kKeys[] = {36, 45, 48, 57, 60, 69, 72, 81};
    return kKeys[static_cast<int>(bank.value(program, state::kKSplit) * 7.0f)];
}

// Makes a note just below the split that much louder than the one above it, dB.
void settleBass(state::Bank& bank, int program, double held) {
    constexpr double kStep = 3.5;
    const bool contrabass = sounds(bank, program, state::kContrabass2);
    const bool cello = sounds(bank, program, state::kCello2);
    if (!contrabass && !cello) return;
    const int split = splitKey(bank, program);
    for (int round = 0; round < 4; ++round) {
        const auto instrument = instrumentOf(bank, program);
        const auto level = [&](int key) {
            return loudnessOf(hold(*instrument, {key}, kVelocity, held));
        };
        const double step =
            0.5 * (level(split - 1) + level(split - 3) - level(split) - level(split + 2));
        const double factor = std::pow(10.0, std::clamp(kStep - step, -12.0, 6.0) / 20.0);
        if (contrabass) scale(bank, program, state::kContrabass, factor);
        if (cello) scale(bank, program, state::kCello, factor);
    }
}

}  // namespace

void settle(state::Bank& bank, int program) {
    constexpr double kHiss = 25.5;
    constexpr double kLeastHiss = 19.5;
    constexpr double kHighestPeak = -1.5;
    constexpr double kHighestPassagePeak = -4.0;
    constexpr double kMostBend = 2.0;  // of the loudness of note and chord towards the passage's
    constexpr double kHighestRest = -52.0;
    const double held = std::max(1.8, attackSeconds(bank, program) + 1.2);
    settleBass(bank, program, held);
    double wanted = kHiss;
    for (int round = 0; round < 6; ++round) {
        const auto instrument = instrumentOf(bank, program);
        const double note = loudnessOf(hold(*instrument, {60}, kVelocity, held));
        const double chord = loudnessOf(hold(*instrument, {60, 64, 67}, kVelocity, held));
        const double hiss = note - hissLoudness(bank, program);
        if (restDb(bank, program) > kHighestRest && wanted > kLeastHiss) wanted -= 1.0;

        double highest = 0.0;
        for (const auto& [level, onOff] : kLevels) {
            if (!sounds(bank, program, onOff)) continue;
            highest = std::max<double>(highest, bank.value(program, level));
        }
        const double factor = std::min(std::pow(10.0, (wanted - hiss) / 20.0), 1.0 / highest);
        for (const auto& [level, onOff] : kLevels) {
            if (sounds(bank, program, onOff)) scale(bank, program, level, factor);
        }
        // Both in their bounds, as near the middle as they go; and room for the loudest chord.
        double raise = 0.5 * (kNoteLoudness - note + kChordLoudness - chord);
        const Take busy = passage(*instrument);
        raise +=
            std::clamp(kPassageLoudness - integratedLoudness(busy) - raise, -kMostBend, kMostBend);
        raise =
            std::clamp(raise, std::max(kNoteLoudness - note - 2.7, kChordLoudness - chord - 2.2),
                       std::min(kNoteLoudness - note + 2.7, kChordLoudness - chord + 2.2));
        raise = std::min(raise, kHighestPeak - peakDb(tenKeys(bank, program)) + decibels(factor));
        raise = std::min(raise, kHighestPassagePeak - peakDb(busy));
        scale(bank, program, state::kVolume, std::pow(10.0, raise / 20.0) / factor);
    }
}

std::vector<std::string> faults(const Figures& figures) {
    struct Bound {
        const char* what;
        double value, lowest, highest;
    };
    // With one loudness for all keys, three are 9.5 dB louder than one beyond their sum, and ten
    // are 10.5 dB louder than three. So that ten fit, fewer have to be faint.
    const double faintChord = figures.shared ? 8.0 : 0.0;
    const double faintNote = figures.shared ? faintChord + 9.5 : 0.0;
    const Bound bounds[] = {
        {"loudness of a note", figures.note, kNoteLoudness - faintNote - 3.0,
         kNoteLoudness - faintNote + 3.0},
        {"loudness of a chord", figures.chord, kChordLoudness - faintChord - 2.5,
         kChordLoudness - faintChord + 2.5},
        {"loudness of a passage", figures.passage, -60.0, kPassageLoudness + 3.0},
        {"peak of a passage", figures.passagePeak, -30.0, -1.0},
        {"distance of the hiss", figures.hiss, 18.0, 120.0},
        {"peak of ten keys", figures.full, -30.0, -1.0},
        {"range over the keys", figures.keys, 0.0, 10.0},
        {"difference after other sounds", figures.before, 0.0, 2.0},
        {"silence after the release", figures.late, -60.0, 1.0},
        {"peak after the release", figures.rest, -200.0, -48.0},
        {"sharpest edge", figures.edge.db, 0.0, 8.0},
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
    std::vector<Note> notes = kPhrase;
    notes.insert(notes.end(), kAfterPhrase.begin(), kAfterPhrase.end());
    return picture(play(*instrumentOf(bank, program), notes, 0.1 * kFrames));
}

}  // namespace banks
