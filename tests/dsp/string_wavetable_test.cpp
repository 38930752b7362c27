// Tests of the bowed-string cycle and its columns.
#include "dsp/string_wavetable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <iterator>

namespace {

using dsp::kCyclePoints;
using dsp::StringWavetable;
using dsp::WaveCycle;

double harmonic(const WaveCycle& cycle, int number) {
    std::complex<double> sum;
    for (int i = 0; i < kCyclePoints; ++i) {
        sum += std::polar(2.0 / kCyclePoints * cycle[static_cast<std::size_t>(i)],
                          -6.283185307179586 * number * i / kCyclePoints);
    }
    return std::abs(sum);
}

double decibels(double ratio) {
    return 20.0 * std::log10(ratio);
}

TEST(StringCycle, StartsWithTheSlipAndClosesOnItself) {
    const WaveCycle cycle = dsp::rawStringCycle();
    const float slip[] = {-0.004425f, -0.420515f, -0.709494f, -0.853633f, -0.926786f,
                          -0.970244f, -0.989959f, -0.996399f, -0.994385f};
    for (std::size_t i = 0; i < std::size(slip); ++i) EXPECT_EQ(cycle[i], slip[i]);
    EXPECT_EQ(cycle[399], 0.017762f);
    EXPECT_EQ(cycle[400], -0.004425f);
}

TEST(StringCycle, RisesOnceAndFallsOnceWithoutACorner) {
    const WaveCycle cycle = dsp::rawStringCycle();
    int turns = 0;
    for (std::size_t i = 1; i < kCyclePoints; ++i) {
        EXPECT_LE(std::fabs(cycle[i]), 1.0f);
        const float step = cycle[i] - cycle[i - 1];
        const float next = cycle[i + 1] - cycle[i];
        turns += (step > 0.0f) != (next > 0.0f);
        // Only the given points of the slip bend harder.
        if (i >= 8) {
            EXPECT_LT(std::fabs(next - step), 0.01f) << i;
        }
    }
    EXPECT_EQ(turns, 2);
}

TEST(StringCycle, IsRichWithSlowlyFallingHarmonics) {
    const WaveCycle cycle = dsp::rawStringCycle();
    const double fundamental = harmonic(cycle, 1);
    for (int h = 2; h <= 60; ++h) {
        SCOPED_TRACE(h);
        const double againstSawtooth = decibels(harmonic(cycle, h) / fundamental * h);
        EXPECT_LT(againstSawtooth, 0.0);
        EXPECT_GT(againstSawtooth, -13.0);
    }
}

TEST(StringColumns, KeepEveryHarmonicOfLowNotesAndOnlyTheFundamentalOfTheHighest) {
    const WaveCycle raw = dsp::rawStringCycle();
    const WaveCycle& low = StringWavetable::shared().column(24);
    for (const int h : {1, 2, 30, 100, 199}) {
        EXPECT_NEAR(harmonic(low, h), harmonic(raw, h), 1e-6) << h;
    }
    const WaveCycle& high = StringWavetable::shared().column(127);
    EXPECT_NEAR(harmonic(high, 1), harmonic(raw, 1), 1e-6);
    for (int h = 2; h < kCyclePoints / 2; ++h) EXPECT_LT(harmonic(high, h), 1e-6) << h;
}

TEST(StringColumns, KeepWhatIsHeardOfTheirHarmonics) {
    const WaveCycle raw = dsp::rawStringCycle();
    for (int note = 0; note < dsp::kNumNotes; note += 7) {
        SCOPED_TRACE(note);
        const WaveCycle& column = StringWavetable::shared().column(note);
        const double hz = dsp::noteFrequencies()[static_cast<std::size_t>(note)];
        // Upper harmonics are lowered to keep their images quiet.
        for (int h = 1; h < kCyclePoints / 2 && h * hz < 16000.0; ++h) {
            const double kept = decibels(harmonic(column, h) / harmonic(raw, h));
            ASSERT_GT(kept, h <= 40 ? -2.5 : -14.0) << h;
        }
    }
}

TEST(StringColumns, AreClosedFreeOfDcAndOfEvenLevel) {
    double before = 0.0;
    for (int note = 0; note < dsp::kNumNotes; ++note) {
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

TEST(NoteFrequencies, ReachConcertPitch) {
    EXPECT_EQ(dsp::noteFrequencies()[0], 8.175798915636872);
    EXPECT_NEAR(dsp::noteFrequencies()[69], 440.0, 1e-6);
    EXPECT_NEAR(dsp::noteFrequencies()[127], 12543.853951, 1e-4);
}

}  // namespace
