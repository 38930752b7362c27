// Tests of the direct form I biquad, its designs and the phaser's pre-filter.
#include "dsp/biquad.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>

namespace {

using dsp::BiquadCoefficients;

constexpr double kPi = 3.14159265358979323846;
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

double gainAt(const BiquadCoefficients& c, double hz, double rate) {
    const std::complex<double> z = std::polar(1.0, -2.0 * kPi * hz / rate);
    return std::abs((double{c.b0} + z * (double{c.b1} + z * double{c.b2})) /
                    (1.0 + z * (double{c.a1} + z * double{c.a2})));
}

bool isStable(const BiquadCoefficients& c) {
    return std::fabs(c.a2) < 1.0f && std::fabs(c.a1) < 1.0f + c.a2;
}

TEST(Biquad, FollowsItsDifferenceEquation) {
    dsp::Biquad filter;
    filter.setCoefficients({0.5f, 0.25f, 0.125f, -0.5f, 0.25f});
    EXPECT_EQ(filter.tick(1.0f), 0.5f);
    EXPECT_EQ(filter.tick(0.0f), 0.5f);
    EXPECT_EQ(filter.tick(0.0f), 0.25f);
    EXPECT_EQ(filter.tick(2.0f), 1.0f);
}

TEST(Biquad, NewCoefficientsKeepTheStatesAndClearZeroesThem) {
    dsp::Biquad filter;
    filter.tick(1.0f);
    filter.setCoefficients({0.0f, 0.5f, 0.0f, -0.25f, 0.0f});
    EXPECT_EQ(filter.tick(0.0f), 0.75f);
    filter.clear();
    EXPECT_EQ(filter.tick(0.0f), 0.0f);
    EXPECT_EQ(filter.coefficients().b1, 0.5f);
}

TEST(BiquadDesign, MeetsTheEndsAndItsQAtTheCorner) {
    for (const double rate : {22050.0, 44100.0, 96000.0, 192000.0}) {
        for (const double hz : {130.8, 1046.5, 7902.1}) {
            SCOPED_TRACE(testing::Message() << hz << " Hz at " << rate);
            const auto high = dsp::designHighPass(hz, dsp::kKeyHighPassQ, rate);
            EXPECT_NEAR(gainAt(high, hz / 100.0, rate), 0.0, 5e-3);
            EXPECT_NEAR(gainAt(high, hz, rate), 0.3, 3e-3);
            EXPECT_NEAR(gainAt(high, rate / 2.0, rate), 1.0, 1e-5);
            const auto low = dsp::designLowPass(hz, dsp::kPhaserPreFilterQ, rate);
            EXPECT_NEAR(gainAt(low, hz / 100.0, rate), 1.0, 5e-3);
            EXPECT_NEAR(gainAt(low, hz, rate), 0.8, 8e-3);
            EXPECT_NEAR(gainAt(low, rate / 2.0, rate), 0.0, 1e-5);
        }
    }
    static_assert(0.5 / dsp::kKeyHighPassQ == 1.6666666666666667, "alpha = sin w x 5/3");
    static_assert(0.5 / dsp::kPhaserPreFilterQ == 0.625, "alpha = sin w x 5/8");
}

TEST(BiquadDesign, IsStableAtAnyFrequency) {
    for (const double rate : {8000.0, 44100.0, 192000.0, 768000.0}) {
        for (const double hz : {-1.0, 0.0, 32.7, 65.4, 0.5 * rate, rate, 1e30, double{kNan}}) {
            SCOPED_TRACE(testing::Message() << hz << " Hz at " << rate);
            EXPECT_TRUE(isStable(dsp::designLowPass(hz, dsp::kPhaserPreFilterQ, rate)));
            EXPECT_TRUE(isStable(dsp::designHighPass(hz, dsp::kKeyHighPassQ, rate)));
        }
    }
}

TEST(PhaserPreFilter, BothEndsOfTheInputMapToPlusOne) {
    const struct {
        float in, out;
    } rows[] = {{0.25f, 0.5f}, {-0.25f, -0.5f}, {0.5f, 1.0f},  {-0.5f, 1.0f},
                {-3.0f, 1.0f}, {kNan, 1.0f},    {1e-39f, 0.0f}};
    dsp::PhaserPreFilter filter;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.in);
        EXPECT_EQ(filter.tick(row.in), row.out);
    }
}

TEST(PhaserPreFilter, StoresWhatItClampedAndFlushed) {
    dsp::PhaserPreFilter filter;
    filter.setCoefficients({10.0f, 0.0f, 0.0f, -0.5f, 0.0f});
    EXPECT_EQ(filter.tick(1.0f), 4.0f);
    EXPECT_EQ(filter.tick(0.0f), 2.0f);
    filter.setCoefficients({-10.0f, 0.0f, 0.0f, -0.5f, 0.0f});
    EXPECT_EQ(filter.tick(1.0f), -4.0f);
    for (int i = 0; i < 140; ++i) filter.tick(0.0f);
    EXPECT_EQ(filter.tick(0.0f), 0.0f);
}

}  // namespace
