// Tests of the double-precision output filter.
#include "dsp/output_filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "dsp/random.h"

namespace {

double settledPeak(dsp::OutputFilter& filter, double hz, double amplitude, double rate) {
    double peak = 0.0;
    const int frames = static_cast<int>(rate);
    for (int i = 0; i < frames; ++i) {
        const double y = filter.tick(amplitude * std::sin(6.283185307179586 * hz * i / rate));
        if (i > frames / 2) peak = std::max(peak, std::fabs(y));
    }
    return peak;
}

TEST(OutputFilter, StartsAsItsEquationsSay) {
    dsp::OutputFilter filter;
    filter.setHighPass(0.5f, 48000.0);
    const double f = 0.125 * 8100.0 + 98.0;
    const double f1 = 6.22 / 48000.0 * f;
    const double f2 = 6.22 / 48000.0 * (f * 0.1462585 + 86.0);
    const double first = 1.0 + dsp::OutputFilter::saturated(f1 * f1 * 0.25);
    EXPECT_DOUBLE_EQ(filter.tick(1.0), first);
    const double high = 0.0 - f1 * f1 - 0.3949155109067489 * f1;
    const double low = f1 * f1 + f1 * (f1 + f1 * high);
    const double second = 0.5 * high + dsp::OutputFilter::saturated(low * 0.25);
    EXPECT_DOUBLE_EQ(filter.tick(0.0), second - f2 * f2 * first - 0.6284230349905618 * f2 * first);
    filter.clear();
    EXPECT_DOUBLE_EQ(filter.tick(1.0), first);
}

TEST(OutputFilter, SaturationIsOddBoundedAndOfUnitSlope) {
    EXPECT_EQ(dsp::OutputFilter::saturated(0.0), 0.0);
    EXPECT_NEAR(dsp::OutputFilter::saturated(1e-6), 1e-6, 1e-15);
    EXPECT_NEAR(dsp::OutputFilter::saturated(1.0), 1.0 - 1.0 / 4.029057, 1e-12);
    double before = 0.0;
    for (double u = 0.01; u < 1e3; u *= 1.5) {
        EXPECT_GT(dsp::OutputFilter::saturated(u), before);
        before = dsp::OutputFilter::saturated(u);
        EXPECT_LE(before, 1.0);
        EXPECT_EQ(dsp::OutputFilter::saturated(-u), -before);
    }
}

TEST(OutputFilter, PassesTheTopAndTakesOffMoreOfTheBottomAsItOpens) {
    for (const double rate : {44100.0, 96000.0}) {
        double before = 10.0;
        for (const float x : {0.0f, 0.3f, 0.6f, 1.0f}) {
            SCOPED_TRACE(testing::Message() << x << " at " << rate);
            dsp::OutputFilter filter;
            filter.setHighPass(x, rate);
            const double bottom = settledPeak(filter, 60.0, 0.1, rate);
            EXPECT_LT(bottom, before);
            before = bottom;
            EXPECT_LT(std::fabs(settledPeak(filter, 0.0, 1.0, rate)), 1e-6);
        }
        dsp::OutputFilter open;
        open.setHighPass(0.0f, rate);
        EXPECT_NEAR(settledPeak(open, 5000.0, 0.1, rate), 0.1, 2e-3);
    }
}

TEST(OutputFilter, ARateChangeClearsAndDiffersFromAPushInTheLastBitsOnly) {
    dsp::OutputFilter pushed;
    dsp::OutputFilter changed;
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
            dsp::OutputFilter filters[2];
            filters[0].setHighPass(x, rate);
            filters[1].setRate(rate, x);
            for (auto& filter : filters) filter.setHighPass(std::nanf(""), rate);
            for (auto& filter : filters) filter.setHighPass(x, 0.0);
            dsp::Random random;
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
