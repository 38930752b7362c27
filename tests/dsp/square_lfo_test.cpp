// Tests of the chorus LFO.
#include "dsp/square_lfo.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

// The sign of each step of the output, which shows the square before smoothing.
std::string shape(dsp::SquareLfo& lfo, int frames) {
    std::string text;
    float before = 0.0f;
    for (int i = 0; i < frames; ++i) {
        const float now = lfo.tick();
        text += now > before ? '+' : '-';
        before = now;
    }
    return text;
}

TEST(SquareLfo, CountsWholeSamplesOfAHalfPeriod) {
    dsp::SquareLfo lfo;
    lfo.setFrequency(1.0);
    lfo.setRate(6.0);
    EXPECT_EQ(shape(lfo, 12), "+++---+++---");
    lfo.clear();
    lfo.setRate(5.0);
    EXPECT_EQ(shape(lfo, 10), "+++--+++--");
    lfo.clear();
    EXPECT_EQ(lfo.tick(), static_cast<float>(1.0 / 5.0 * 0.628318));
}

TEST(SquareLfo, SettlesNearBothEndsAtTheChorusRates) {
    for (const double rate : {8000.0, 44100.0, 768000.0}) {
        for (const double hz : {0.86, 6.5}) {
            SCOPED_TRACE(testing::Message() << hz << " Hz at " << rate);
            dsp::SquareLfo lfo;
            lfo.setRate(rate);
            lfo.setFrequency(hz);
            const int half = static_cast<int>(0.5 / hz * rate);
            // Each half period leaves exp(-0.314) of the distance to the other end.
            double expected = 0.0;
            for (int n = 0; n < 6; ++n) {
                const double end = n % 2 == 0 ? 1.0 : -1.0;
                expected = end + (expected - end) * std::exp(-0.314159);
                float y = 0.0f;
                for (int i = 0; i < half; ++i) y = lfo.tick();
                EXPECT_NEAR(y, expected, 2e-2);
                EXPECT_LE(std::fabs(y), 1.0f);
            }
        }
    }
}

TEST(SquareLfo, StandsStillAtFrequenciesThatAreNone) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double hz : {0.0, -2.0, nan}) {
        SCOPED_TRACE(hz);
        dsp::SquareLfo lfo;
        lfo.setFrequency(hz);
        for (int i = 0; i < 1000; ++i) EXPECT_EQ(lfo.tick(), 0.0f);
    }
    dsp::SquareLfo fast;
    fast.setFrequency(1e30);
    fast.setRate(0.0);
    fast.setRate(nan);
    for (int i = 0; i < 1000; ++i) EXPECT_LE(std::fabs(fast.tick()), 1.0f);
}

}  // namespace
