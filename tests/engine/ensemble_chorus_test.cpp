// Tests of the ensemble chorus. A constant input reveals its modulation.
#include "engine/ensemble_chorus.h"

#include <gtest/gtest.h>

#include <cmath>
#include <algorithm>
#include <memory>

namespace {

using engine::EnsembleChorus;

struct StereoSample {
    float left;
    float right;
};

// One sample through a segment of one.
StereoSample tick(EnsembleChorus& chorus, float x) {
    engine::Signal in{};
    in[0] = x;
    engine::StereoSignal out;
    chorus.render(in, 1, out);
    return {out.left[0], out.right[0]};
}

// For a constant 1 each tap outputs 1 - 0.4 u. `combine` isolates the part of both sides that only
// the delayed modulator moves. Returns the first sample at which that part moves.
template <typename Combine>
int firstDelayedMove(double rate, bool slow, Combine combine) {
    const auto chorus = std::make_unique<EnsembleChorus>();
    chorus->setOn(true);
    chorus->setStereo(1.0f);  // left: tap 2 and half of tap 3, right: tap 1 and half of tap 3
    chorus->setSlowDepth(slow ? 1.0f : 0.0f);
    chorus->setFastDepth(slow ? 0.0f : 1.0f);
    chorus->setRate(rate);
    const int filled = static_cast<int>(rate * 0.02);
    for (int i = 0; i < 2 * static_cast<int>(rate); ++i) {
        const StereoSample y = tick(*chorus, 1.0f);
        if (i > filled && std::fabs(combine(y)) > 2e-6) return i;
    }
    return -1;
}

TEST(EnsembleChorus, DelaysItsModulatorsByAThirdOfTheirPeriods) {
    struct Case {
        double rate;
        int slow;
        int fast;
    };
    for (const Case& c : {Case{44100.0, 17093, 2261}, Case{96000.0, 37209, 4923}}) {
        SCOPED_TRACE(c.rate);
        EXPECT_EQ(
            firstDelayedMove(c.rate, true, [](StereoSample y) { return 3.0 - (y.left + y.right); }),
            c.slow);
        EXPECT_EQ(firstDelayedMove(c.rate, false, [](StereoSample y) { return 1.5 - y.left; }),
                  c.fast);
    }
}

TEST(EnsembleChorus, IsQuieterOnTheRightWhenOff) {
    const auto chorus = std::make_unique<EnsembleChorus>();
    const StereoSample y = tick(*chorus, 0.75f);
    EXPECT_EQ(y.left, 0.75f);
    EXPECT_EQ(y.right, 0.375f);
}

TEST(EnsembleChorus, TellsWhereItsTapsStand) {
    const auto chorus = std::make_unique<EnsembleChorus>();
    chorus->setOn(true);
    chorus->setRate(44100.0);
    chorus->setWide(1.5f);
    tick(*chorus, 0.0f);
    for (int tap = 0; tap < EnsembleChorus::kTaps; ++tap) {
        EXPECT_NEAR(chorus->tapPosition(tap), 0.5f, 1e-4f);  // without modulation
    }
    chorus->setSlowDepth(1.0f);
    float lowest = 1.0f;
    float highest = 0.0f;
    for (int i = 0; i < 88200; ++i) {
        tick(*chorus, 0.0f);
        lowest = std::min(lowest, chorus->tapPosition(0));
        highest = std::max(highest, chorus->tapPosition(0));
    }
    EXPECT_GT(lowest, 0.0f);
    EXPECT_LT(lowest, 0.45f);
    EXPECT_GT(highest, 0.55f);
    EXPECT_LT(highest, 1.0f);
}

}  // namespace
