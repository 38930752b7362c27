// Tests of the filters: biquad, one-pole, state-variable, smoother, output filter.
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "dsp/biquad.h"
#include "dsp/one_pole.h"
#include "dsp/output_filter.h"
#include "dsp/random.h"
#include "dsp/smoother.h"
#include "dsp/state_variable_filter.h"
#include "tests/dsp/measure.h"

namespace dsp {
namespace {

bool isStable(const BiquadCoefficients& c) {
    return std::fabs(c.a2) < 1.0f && std::fabs(c.a1) < 1.0f + c.a2;
}

TEST(BiquadDesign, IsStableAtAnyFrequency) {
    for (const double rate : {8000.0, 44100.0, 192000.0, 768000.0}) {
        for (const double hz :
             {-1.0, 0.0, 32.7, 65.4, 0.5 * rate, rate, 1e30, double{kHostile[0]}}) {
            SCOPED_TRACE(testing::Message() << hz << " Hz at " << rate);
            EXPECT_TRUE(isStable(designLowPass(hz, kPhaserPreFilterQ, rate)));
            EXPECT_TRUE(isStable(designHighPass(hz, kKeyHighPassQ, rate)));
        }
    }
}

TEST(PhaserPreFilter, BothEndsOfTheInputMapToPlusOne) {
    const struct {
        float in, out;
    } rows[] = {{0.25f, 0.5f}, {-0.25f, -0.5f},     {0.5f, 1.0f},  {-0.5f, 1.0f},
                {-3.0f, 1.0f}, {kHostile[0], 1.0f}, {1e-39f, 0.0f}};
    PhaserPreFilter filter;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.in);
        EXPECT_EQ(filter.tick(row.in), row.out);
    }
}

TEST(PhaserPreFilter, StoresWhatItClampedAndFlushed) {
    PhaserPreFilter filter;
    filter.setCoefficients({10.0f, 0.0f, 0.0f, -0.5f, 0.0f});
    EXPECT_EQ(filter.tick(1.0f), 4.0f);
    EXPECT_EQ(filter.tick(0.0f), 2.0f);
    filter.setCoefficients({-10.0f, 0.0f, 0.0f, -0.5f, 0.0f});
    EXPECT_EQ(filter.tick(1.0f), -4.0f);
    for (int i = 0; i < 140; ++i) filter.tick(0.0f);
    EXPECT_EQ(filter.tick(0.0f), 0.0f);
}

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

TEST(OnePole, TakesItsCoefficientFromFrequencyAndRate) {
    OnePole filter;
    filter.setFrequency(1000.0f);
    EXPECT_FLOAT_EQ(filter.coefficient(), 0.14247596f);  // 6.28319 / 44100 x 1000
    filter.setRate(48000.0f);
    filter.setFrequency(500.0f);
    EXPECT_FLOAT_EQ(filter.coefficient(), 0.065449896f);
    filter.setFrequency(768000.0f);
    EXPECT_EQ(filter.coefficient(), 1.9f);
    filter.setFrequency(-1.0f);
    EXPECT_EQ(filter.coefficient(), 0.0f);
}

TEST(StateVariableFilter, LimitsItsSettings) {
    StateVariableFilter filter;
    EXPECT_EQ(filter.coefficient(), 0.926f);
    const struct {
        float hz, coefficient;
    } cutoffs[] = {{0.0f, 0.03f}, {22050.0f, 0.998f}, {-5.0f, 0.03f}, {1000.0f, 0.14247596f}};
    for (const auto& row : cutoffs) {
        SCOPED_TRACE(row.hz);
        filter.setCutoff(row.hz);
        EXPECT_FLOAT_EQ(filter.coefficient(), row.coefficient);
    }
    filter.setResonance(0.0f);
    EXPECT_FLOAT_EQ(filter.damping(), 1.4f);
    EXPECT_FLOAT_EQ(filter.makeUp(), 0.67f);
    filter.setResonance(1.0f);
    EXPECT_FLOAT_EQ(filter.damping(), 0.14f);
}

TEST(StateVariableFilter, FirstSamplesAreExact) {
    StateVariableFilter filter;
    filter.setCoefficient(0.5f);
    filter.setShape(0.553f, 1.0f);  // the make-up gain is not applied
    filter.setPoles(2);
    EXPECT_EQ(filter.process(1.0f), 0.25f);    // band 0.5
    EXPECT_EQ(filter.process(0.0f), 0.3125f);  // band 0.5 - 0.75 / 2 = 0.125
    filter.clear();
    filter.setPoles(4);
    EXPECT_EQ(filter.process(1.0f), 0.0625f);
    filter.clear();
    EXPECT_EQ(filter.processBandPass(1.0f), 0.5f);
    EXPECT_EQ(filter.processBandPass(0.0f), 0.125f);
}

TEST(StateVariableFilter, DenormalInputsLeaveTheStateAtZero) {
    StateVariableFilter filter;
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(filter.process(1e-39f), 0.0f);
        EXPECT_EQ(filter.processBandPass(-1e-40f), 0.0f);
    }
}

TEST(StateVariableFilter, IsAsConstructedAfterAReset) {
    StateVariableFilter filter;
    filter.setCutoff(100.0f);
    filter.setResonance(0.9f);
    filter.process(1.0f);
    filter.reset();
    EXPECT_EQ(filter.process(1.0f), StateVariableFilter().process(1.0f));
}

TEST(Smoother, SettlesToMinus60DbInItsTime) {
    Smoother smoother;
    smoother.setTime(0.0f);
    EXPECT_EQ(smoother.coefficient(), 1.0f);
    smoother.setTime(100.0f);
    EXPECT_NEAR(std::pow(1.0 - smoother.coefficient(), 4410.0), 0.001, 1e-6);
    smoother.setTime(-1.0f);
    EXPECT_NEAR(std::pow(1.0 - smoother.coefficient(), 4410.0), 0.001, 1e-6);
}

TEST(Smoother, HighPassBlocksBelow21Hz) {
    Smoother smoother;
    EXPECT_EQ(smoother.highPass(0.7f), 0.7f);  // passes everything until a time is set
    smoother.setTime(0.0f);
    const auto gain = [&](double hz) {
        return gainAt(hz, 44100.0, [&](float x) { return smoother.highPass(x); });
    };
    EXPECT_NEAR(gain(1000.0), 1.0, 0.01);
    EXPECT_NEAR(gain(21.0), std::sqrt(0.5), 0.01);
    EXPECT_LT(gain(2.0), 0.1);
    smoother.clear();
    EXPECT_NEAR(smoother.highPass(1.0f), 1.0f - 21.0f * 0.00014247595f, 1e-6f);
}

TEST(OutputFilter, ARateChangeClearsAndDiffersFromAPushInTheLastBitsOnly) {
    OutputFilter pushed;
    OutputFilter changed;
    changed.tick(1.0);
    pushed.setHighPass(0.37f, 44100.0);
    changed.setRate(44100.0, 0.37f);
    bool differs = false;
    for (int i = 0; i < 200; ++i) {
        const double x = i % 20 < 10 ? 0.5 : -0.5;
        const double a = pushed.tick(x);
        const double b = changed.tick(x);
        differs |= a != b;
        ASSERT_NEAR(a, b, 1e-6);
    }
    EXPECT_TRUE(differs);
}

TEST(OutputFilter, StaysBoundedAtEveryRate) {
    for (const double rate : {1000.0, 4000.0, 8000.0, 22050.0, 44100.0, 768000.0}) {
        for (const float x : {0.0f, 1.0f}) {
            SCOPED_TRACE(testing::Message() << x << " at " << rate);
            OutputFilter filters[2];
            filters[0].setHighPass(x, rate);
            filters[1].setRate(rate, x);
            Random random;
            double peak = 0.0;
            for (int i = 0; i < 20000; ++i) {
                const double in = random.next() < 16384 ? 1.0 : -1.0;
                for (auto& filter : filters) peak = std::max(peak, std::fabs(filter.tick(in)));
            }
            EXPECT_LT(peak, 50.0);
        }
    }
}

}  // namespace
}  // namespace dsp
