// Tests of the peak limiter.
#include "dsp/limiter.h"

#include <gtest/gtest.h>

#include <cmath>

#include "dsp/random.h"

namespace {

TEST(PeakLimiter, GivesTheFullGainLawToTheLastBit) {
    dsp::PeakLimiter limiter;
    dsp::Random random;
    for (int i = 0; i < 20000; ++i) {
        float left = static_cast<float>(random.next()) * 6e-5f;
        float right = left;
        const float in = left;
        limiter.process(left, right);
        double exponent = 0.0;
        if (limiter.follower() >= 1e-5) {
            const double decibels = 20.0 * std::log10(limiter.follower());
            if (decibels >= -1.0) exponent = (decibels + 1.0) * -0.0495;
        }
        const float expected = static_cast<float>(in * std::pow(10.0, exponent) * 4.0);
        ASSERT_NEAR(left, expected, std::fabs(expected) * 1.2e-7f);
    }
}

TEST(PeakLimiter, SilenceEndsInAnExactZero) {
    dsp::PeakLimiter limiter;
    for (int i = 0; i < 100000; ++i) {
        float left = i == 0 ? 1.0f : 0.0f;
        float right = left;
        limiter.process(left, right);
    }
    EXPECT_EQ(limiter.follower(), 0.0);
}

}  // namespace
