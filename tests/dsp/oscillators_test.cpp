// Tests of the oscillators: feedback operator, wavetable and its columns.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "dsp/lanes/kernels.h"
#include "dsp/module_fm_op.h"
#include "dsp/pitched_oscillator.h"
#include "tests/dsp/measure.h"

namespace dsp {
namespace {

// The operator's sine, in double.
double polynomialSine(double p) {
    const double a = std::fabs(p);
    return (a - 0.5) * (a - 0.732963) * (a + 0.232963) * (p * 68.5949);
}

TEST(ModuleFMop, FeedbackGainSwitchesAt2100Hz) {
    for (const float hz : {2099.99f, 2100.0f}) {
        SCOPED_TRACE(hz);
        ModuleFMop op;
        op.setFrequency(hz);
        EXPECT_EQ(op.frequency(), hz);
        op.process(0.251f);  // the raw sine is 1

        const double gain = hz < 2100.0f ? 1.11 : 0.8963;
        const double w = hz / 44100.0 * 12.56636;
        const double second = polynomialSine(gain * 0.15915507 + 0.1);
        const double low = w + (second - w) * w;
        const double high = w * 1.0053087 + (low - w * 1.0053087) * 1.0053087;
        EXPECT_NEAR(op.process(0.101f), (second - low) * 0.9 + (second - high) * 0.1, 1e-4);
    }
}

// Phases around those where the sine wraps: half a turn plus the offset, an ulp at a time.
TEST(ModuleFMop, GivesTheSameToneInLanesWhereItsPhaseWraps) {
    constexpr int kFrames = 20;
    std::vector<float> phases(kFrames * kVoiceLanes), a(phases), b(phases);
    LaneMasks on{};
    for (int lane = 0; lane < 44; ++lane) {
        on[lane] = -1;
        float turns = 0.5f * static_cast<float>(lane % 6) + ModuleFMop::kPhaseOffset;
        for (int t = 0; t < kFrames / 2; ++t) turns = std::nextafter(turns, 0.0f);
        for (int t = 0; t < kFrames; ++t) {
            phases[t * kVoiceLanes + lane] = turns = std::nextafter(turns, 4.0f);
        }
    }
    const std::vector<float> masters(kPaddedPhases);
    for (const auto set :
         {InstructionSet::kBaseline, InstructionSet::kAvx2, InstructionSet::kAvx512}) {
        useInstructionSet(set);
        for (int t = 0; t < kFrames; ++t) {
            VoiceLanes voices;  // without feedback yet
            const float* const turns = &phases[t * kVoiceLanes];
            kernels().runFeedback({voices, on, masters.data(), nullptr, turns, false, true,
                                   a.data(), b.data(), nullptr, 1});
            for (int lane = 0; lane < 44; ++lane) {
                ASSERT_EQ(b[lane], ModuleFMop().process(turns[lane])) << t << " " << lane;
            }
        }
    }
    useInstructionSet(widestInstructionSet());
}

double noteHz(int note) {
    return noteFrequencies()[static_cast<std::size_t>(note)];
}

// Loudest partial below 16 kHz (lower at rates below 44.1 kHz) that is no harmonic of the note, in
// dB against the fundamental. The note is bent up by at most two semitones, so that an odd number
// of cycles fills the period and every image has its own bin.
double worstAliasDb(int note, double rate) {
    const std::size_t size = note < 36 ? 16384 : 8192;
    const double cyclesUnbent = noteHz(note) / rate * static_cast<double>(size);
    auto cycles = static_cast<std::size_t>(cyclesUnbent * 1.1225);
    if (cycles % 2 == 0) --cycles;
    const double bend = static_cast<double>(cycles) / cyclesUnbent;
    EXPECT_GE(bend, 1.0) << "no odd number of cycles";

    PitchedOscillator oscillator;
    oscillator.setRate(rate);
    oscillator.setNote(note);
    std::vector<double> period(size);
    for (int settling = 0; settling < 3; ++settling) {
        for (double& y : period) y = oscillator.tick(bend);
    }
    double worst = 0.0;
    const auto top = static_cast<std::size_t>(16000.0 / 44100.0 * static_cast<double>(size));
    for (std::size_t bin = 1; bin < top; ++bin) {
        if (bin % cycles != 0) worst = std::max(worst, partial(period, bin));
    }
    return 20.0 * std::log10(worst / partial(period, cycles));
}

TEST(PitchedOscillator, FoldsNothingAudibleBackBelowSixteenKilohertz) {
    for (const int note : {24, 36, 43, 48, 57, 64, 72, 84, 96, 108, 120, 127}) {
        EXPECT_LT(worstAliasDb(note, 44100.0), -80.0) << "note " << note;
    }
    for (const double rate : {22050.0, 32000.0}) {
        for (const int note : {36, 60, 96}) {
            EXPECT_LT(worstAliasDb(note, rate), -80.0) << "note " << note << " at " << rate;
        }
    }
}

TEST(PitchedOscillator, BoundsTheNote) {
    for (const auto& [given, bounded] : {std::pair{-5, 0}, {128, 127}, {1 << 30, 127}}) {
        PitchedOscillator a;
        PitchedOscillator b;
        a.setNote(given);
        b.setNote(bounded);
        for (int i = 0; i < 100; ++i) ASSERT_EQ(a.tick(1.0), b.tick(1.0)) << given;
    }
}

TEST(PitchedOscillator, IsSilentAboveHalfTheRate) {
    PitchedOscillator oscillator;
    oscillator.setRate(8000.0);
    oscillator.setNote(120);
    float y = 1.0f;
    for (int i = 0; i < 1000; ++i) y = oscillator.tick(1.0);
    EXPECT_LT(std::fabs(y), 1e-6f);
}

double harmonic(const WaveCycle& cycle, int number) {
    return partial({cycle.begin(), cycle.end() - 1}, static_cast<std::size_t>(number));
}

TEST(StringCycle, StartsWithTheSlipAndClosesOnItself) {
    const WaveCycle cycle = rawStringCycle();
    const float slip[] = {-0.004425f, -0.420515f, -0.709494f, -0.853633f, -0.926786f,
                          -0.970244f, -0.989959f, -0.996399f, -0.994385f};
    for (std::size_t i = 0; i < std::size(slip); ++i) EXPECT_EQ(cycle[i], slip[i]);
    EXPECT_EQ(cycle[399], 0.017762f);
    EXPECT_EQ(cycle[400], -0.004425f);
}

TEST(StringColumns, KeepWhatIsHeardOfTheirHarmonics) {
    const WaveCycle raw = rawStringCycle();
    for (int note = 0; note < kNumNotes; note += 7) {
        SCOPED_TRACE(note);
        const WaveCycle& column = StringWavetable::shared().column(note);
        const double hz = noteFrequencies()[static_cast<std::size_t>(note)];
        // Upper harmonics are lowered to keep their images quiet.
        for (int h = 1; h < kCyclePoints / 2 && h * hz < 16000.0; ++h) {
            const double kept = 20.0 * std::log10(harmonic(column, h) / harmonic(raw, h));
            ASSERT_GT(kept, h <= 40 ? -2.5 : -14.0) << h;
        }
    }
}

TEST(StringColumns, AreClosedFreeOfDcAndOfEvenLevel) {
    double before = 0.0;
    for (int note = 0; note < kNumNotes; ++note) {
        SCOPED_TRACE(note);
        const WaveCycle& column = StringWavetable::shared().column(note);
        EXPECT_EQ(column.front(), column.back());
        double sum = 0.0;
        double energy = 0.0;
        for (std::size_t i = 0; i < kCyclePoints; ++i) {
            sum += column[i];
            energy += column[i] * column[i];
            EXPECT_LT(std::fabs(column[i]), 1.15f);
        }
        EXPECT_NEAR(sum, 0.0, 1e-4);
        const double level = 10.0 * std::log10(energy);
        if (note > 0) {
            EXPECT_NEAR(level, before, 0.25);
        }
        before = level;
    }
}

}  // namespace
}  // namespace dsp
