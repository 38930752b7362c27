// Tests of the smoother.
#include "dsp/smoother.h"

#include <gtest/gtest.h>

#include "tests/dsp/measure.h"

namespace dsp {
namespace {

TEST(Smoother, SettlesToMinus60DbInItsTime) {
    Smoother smoother;
    smoother.setTime(0.0f);
    EXPECT_EQ(smoother.coefficient(), 1.0f);
    smoother.setTime(100.0f);
    EXPECT_NEAR(std::pow(1.0 - smoother.coefficient(), 4410.0), 0.001, 1e-6);
    for (const float bad : kHostile) smoother.setTime(bad);
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

}  // namespace
}  // namespace dsp
