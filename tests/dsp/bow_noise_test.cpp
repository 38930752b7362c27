// Tests of the random generator and the bow-noise table made from it.
#include "dsp/bow_noise.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>

namespace {

// Mean power of the table at a few frequencies of a band.
double bandPower(double fromHz, double toHz) {
    double power = 0.0;
    constexpr int kProbes = 24;
    for (int n = 0; n < kProbes; ++n) {
        const double hz = fromHz + (toHz - fromHz) * n / kProbes;
        std::complex<double> sum;
        for (std::size_t i = 0; i < dsp::kBowNoiseSize; ++i) {
            sum += std::polar<double>(dsp::bowNoise()[i],
                                      -6.283185307179586 * hz * static_cast<double>(i) / 44100.0);
        }
        power += std::norm(sum) / kProbes;
    }
    return power;
}

TEST(Random, GivesTheKnownSequence) {
    dsp::Random random;
    for (const int expected : {41, 18467, 6334, 26500, 19169, 15724}) {
        EXPECT_EQ(random.next(), expected);
    }
}

TEST(BowNoise, LeavesTheGeneratorWhereInstancesStart) {
    dsp::Random random;
    dsp::BowNoiseTable table;
    dsp::buildBowNoise(random, table);
    EXPECT_EQ(random.state(), dsp::kStateAfterTable);
    EXPECT_EQ(table, dsp::bowNoise());
    EXPECT_EQ(&dsp::bowNoise(), &dsp::bowNoise());
    dsp::buildBowNoise(random, table);
    EXPECT_NE(table, dsp::bowNoise());
}

TEST(BowNoise, HoldsTheValuesOfTheSameFiltersInDoublePrecision) {
    const struct {
        std::size_t index;
        double value;
    } rows[] = {{0, -0.03103511004257993},     {1, -0.04284597555282104},
                {999, -0.007091344501380967},  {16000, 0.06389115415964962},
                {32998, -0.02683485024220387}, {32999, -0.024263407897898277}};
    for (const auto& row : rows) EXPECT_NEAR(dsp::bowNoise()[row.index], row.value, 2e-6);
}

TEST(BowNoise, IsStrongestInTheMiddleOfTheRange) {
    const double middle = bandPower(1000.0, 3000.0);
    EXPECT_GT(middle, 100.0 * bandPower(10.0, 80.0));
    EXPECT_GT(middle, 10.0 * bandPower(15000.0, 20000.0));
}

}  // namespace
