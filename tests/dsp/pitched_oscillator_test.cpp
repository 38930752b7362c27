// Tests of the pitched wavetable oscillator.
#include "dsp/pitched_oscillator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <utility>
#include <vector>

namespace {

using dsp::PitchedOscillator;

double noteHz(int note) {
    return dsp::noteFrequencies()[static_cast<std::size_t>(note)];
}

// Bins of a plain DFT of a signal that repeats every period.size() samples.
class Spectrum {
  public:
    explicit Spectrum(const std::vector<double>& period) : period_(period), turn_(period.size()) {
        for (std::size_t i = 0; i < turn_.size(); ++i) {
            turn_[i] = std::polar(
                2.0 / static_cast<double>(turn_.size()),
                -6.283185307179586 * static_cast<double>(i) / static_cast<double>(turn_.size()));
        }
    }
    double amplitude(std::size_t bin) const {
        std::complex<double> sum;
        for (std::size_t i = 0; i < turn_.size(); ++i) {
            sum += period_[i] * turn_[bin * i % turn_.size()];
        }
        return std::abs(sum);
    }

  private:
    const std::vector<double>& period_;
    std::vector<std::complex<double>> turn_;
};

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
    const Spectrum spectrum(period);
    double worst = 0.0;
    const auto top = static_cast<std::size_t>(16000.0 / 44100.0 * static_cast<double>(size));
    for (std::size_t bin = 1; bin < top; ++bin) {
        if (bin % cycles != 0) worst = std::max(worst, spectrum.amplitude(bin));
    }
    return 20.0 * std::log10(worst / spectrum.amplitude(cycles));
}

TEST(PitchedOscillator, PlaysItsColumnRowByRow) {
    PitchedOscillator oscillator;
    oscillator.setNote(48);
    const double rate = noteHz(48) * 400.0;  // one row per sample
    oscillator.setRate(rate);
    const dsp::WaveCycle& column = dsp::StringWavetable::shared().column(48);
    const float coefficient = static_cast<float>(6.28319 / rate * (0.5 * noteHz(48)));
    float low = 0.0f;
    for (std::size_t i = 0; i < 1000; ++i) {
        low += (column[i % 400] - low) * coefficient;
        ASSERT_NEAR(oscillator.tick(1.0), column[i % 400] - low, 1e-5f) << i;
    }
    oscillator.clear();
    EXPECT_EQ(oscillator.tick(1.0), column[0] - column[0] * coefficient);
}

TEST(PitchedOscillator, InterpolatesBetweenRowsAndFollowsTheBend) {
    PitchedOscillator halfStep;
    PitchedOscillator bent;
    halfStep.setNote(60);
    bent.setNote(60);
    halfStep.setRate(noteHz(60) * 800.0);
    bent.setRate(noteHz(60) * 800.0);
    const dsp::WaveCycle& column = dsp::StringWavetable::shared().column(60);
    // The high-pass scales each sample and subtracts a little of the previous one.
    const float kept = 1.0f - static_cast<float>(6.28319 / 1600.0);
    const float before = (1.0f - kept) * column[0];
    halfStep.tick(1.0);
    bent.tick(0.5);
    EXPECT_NEAR(halfStep.tick(1.0), kept * (0.5f * (column[0] + column[1]) - before), 1e-6f);
    EXPECT_NEAR(bent.tick(0.5), kept * (0.75f * column[0] + 0.25f * column[1] - before), 1e-6f);
}

TEST(PitchedOscillator, FoldsNothingAudibleBackBelowSixteenKilohertz) {
    for (const int note : {24, 36, 43, 48, 57, 64, 72, 84, 96, 108, 120, 127}) {
        EXPECT_LT(worstAliasDb(note, 44100.0), -80.0) << "note " << note;
    }
}

TEST(PitchedOscillator, KeepsTheBandLimitAtLowerRates) {
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

TEST(PitchedOscillator, StaysBoundedAtAnyRateAndBend) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double rate : {nan, -1.0, 0.0, 8000.0, 44100.0, 768000.0}) {
        for (const double bend : {nan, -infinity, -1.0, 0.0, 1.0, 1e9, infinity}) {
            for (const int note : {0, 69, 127}) {
                SCOPED_TRACE(testing::Message() << rate << ' ' << bend << ' ' << note);
                PitchedOscillator oscillator;
                oscillator.setRate(rate);
                oscillator.setNote(note);
                for (int i = 0; i < 2000; ++i) ASSERT_LT(std::fabs(oscillator.tick(bend)), 2.3f);
            }
        }
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

}  // namespace
