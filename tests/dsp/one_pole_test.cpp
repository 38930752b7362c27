// Tests of the one-pole and of the denormal test.
#include "dsp/one_pole.h"

#include <gtest/gtest.h>

#include "tests/dsp/measure.h"

namespace dsp {
namespace {

TEST(Denormal, FlushesZeroExponentsOnly) {
    EXPECT_EQ(flushed(1e-39f), 0.0f);
    EXPECT_EQ(flushed(-1e-45f), 0.0f);
    EXPECT_FALSE(std::signbit(flushed(-0.0f)));
    EXPECT_EQ(flushed(kSmallestNormal), kSmallestNormal);
    EXPECT_EQ(flushed(-3.5f), -3.5f);
}

TEST(OnePole, SettlesToTheInput) {
    OnePole filter;
    filter.setCoefficient(0.5f);
    EXPECT_EQ(filter.tick(1.0f), 0.5f);
    EXPECT_EQ(filter.tick(1.0f), 0.75f);
    for (int i = 0; i < 100; ++i) filter.tick(1.0f);
    EXPECT_FLOAT_EQ(filter.state(), 1.0f);
    filter.clear();
    EXPECT_EQ(filter.tick(1.0f), 0.5f);
}

TEST(OnePole, HighPassSubtractsTheStateBeforeTheSample) {
    OnePole filter;
    filter.setMode(OnePole::kHighPass);
    filter.setCoefficient(0.5f);
    EXPECT_EQ(filter.tick(1.0f), 1.0f);
    EXPECT_EQ(filter.tick(1.0f), 0.5f);
    filter.reset();
    EXPECT_EQ(filter.coefficient(), 1.0f);
    EXPECT_EQ(filter.tick(1.0f), 1.0f);  // the mode stays
    EXPECT_EQ(filter.tick(1.0f), kSmallestNormal);
}

TEST(OnePole, FallsAboveTheCorner) {
    OnePole filter;
    filter.setRate(48000.0f);
    filter.setFrequency(500.0f);
    const auto gain = [&](double hz) {
        return gainAt(hz, 48000.0, [&](float x) { return filter.tickLowPass(x); });
    };
    EXPECT_NEAR(gain(50.0), 1.0, 0.01);
    EXPECT_NEAR(gain(500.0), std::sqrt(0.5), 0.03);
    EXPECT_NEAR(gain(5000.0), 0.1, 0.02);
}

TEST(OnePole, StaysStableWithHostileSettings) {
    for (const float bad : kHostile) {
        OnePole filter;
        filter.setCoefficient(0.5f);
        filter.setRate(bad);
        filter.setRate(0.0f);
        filter.setFrequency(bad);
        filter.setCoefficient(bad);
        EXPECT_EQ(filter.coefficient(), 0.5f);
        filter.setFrequency(768000.0f);
        for (int i = 0; i < 1000; ++i) filter.tick(1.0f);
        EXPECT_NEAR(filter.state(), 1.0f, 1e-5f);
        filter.setFrequency(0.0f);
        EXPECT_EQ(filter.coefficient(), 0.0f);
    }
}

}  // namespace
}  // namespace dsp
