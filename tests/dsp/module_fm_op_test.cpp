// Tests of the feedback operator.
#include "dsp/module_fm_op.h"

#include <gtest/gtest.h>

#include "tests/dsp/measure.h"

namespace dsp {
namespace {

constexpr double kTwoPi = 6.283185307179586;

// The operator's sine, in double.
double polynomialSine(double p) {
    const double a = std::fabs(p);
    return (a - 0.5) * (a - 0.732963) * (a + 0.232963) * (p * 68.5949);
}

TEST(ModuleFMop, SineIsCloseToTheTrueOne) {
    for (int i = -49; i < 150; ++i) {
        const float phase = static_cast<float>(i) / 100.0f;
        SCOPED_TRACE(phase);
        ModuleFMop fresh;
        EXPECT_NEAR(fresh.process(phase + 0.001f), std::sin(kTwoPi * phase), 0.012);
    }
}

TEST(ModuleFMop, WrapBelowMinusOneHalfLeavesACycle) {
    ModuleFMop op;
    EXPECT_NEAR(op.process(-0.9f), polynomialSine(-0.901), 1e-3);
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

TEST(ModuleFMop, SquaredFeedbackTakesOneFilter) {
    ModuleFMop op;
    op.setRate(48000.0f);
    op.setFrequency(440.0f);
    const double w = 440.0 / 48000.0 * 9.42477;
    EXPECT_NEAR(op.processSquared(0.251f), 1.0 - w, 1e-4);
    const double second = polynomialSine(0.15915507 - 0.2);
    EXPECT_NEAR(op.processSquared(-0.199f), second - (w + (second - w) * w), 1e-4);
}

TEST(ModuleFMop, LowRatesStayBounded) {
    for (const float rate : {1.0f, 8000.0f, 768000.0f}) {
        for (const bool squared : {false, true}) {
            SCOPED_TRACE(testing::Message() << rate << (squared ? " squared" : ""));
            ModuleFMop op;
            op.setFrequency(6272.0f);
            op.setRate(rate);
            double phase = 0.0;
            float highest = 0.0f;
            for (int i = 0; i < 20000; ++i) {
                phase += 6272.0 / rate;
                phase -= std::floor(phase);
                const float p = static_cast<float>(phase);
                highest =
                    std::fmax(highest, std::fabs(squared ? op.processSquared(p) : op.process(p)));
            }
            EXPECT_GT(highest, 0.001f);
            EXPECT_LT(highest, 100.0f);
        }
    }
}

TEST(ModuleFMop, RecoversFromHostileInput) {
    for (const float bad : kHostile) {
        SCOPED_TRACE(bad);
        ModuleFMop op;
        op.setFrequency(440.0f);
        op.setRate(bad);
        op.setRate(0.0f);
        op.setFrequency(bad);
        op.setFrequency(-1.0f);
        EXPECT_EQ(op.frequency(), 440.0f);
        EXPECT_TRUE(std::isfinite(op.process(bad)));
        EXPECT_TRUE(std::isfinite(op.processSquared(bad)));
        EXPECT_TRUE(std::isfinite(op.process(1e30f)));
        op.clear();
        EXPECT_EQ(op.frequency(), 440.0f);
        ModuleFMop fresh;
        fresh.setFrequency(440.0f);
        EXPECT_EQ(op.process(0.3f), fresh.process(0.3f));
    }
}

}  // namespace
}  // namespace dsp
