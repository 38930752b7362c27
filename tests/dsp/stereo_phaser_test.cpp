// Tests of the stereo phaser.
#include "dsp/stereo_phaser.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/dsp/measure.h"

namespace dsp {
namespace {

using Frame = std::pair<float, float>;

Frame tick(StereoPhaser& phaser, float left, float right) {
    Frame out;
    phaser.process(left, right, &out.first, &out.second);
    return out;
}

// Response to an impulse on the left.
std::vector<Frame> impulse(StereoPhaser& phaser, int samples) {
    std::vector<Frame> out;
    for (int i = 0; i < samples; ++i) out.push_back(tick(phaser, i == 0 ? 1.0f : 0.0f, 0.0f));
    return out;
}

// Coefficient of the allpass `steps` of 1/256 octave above 20 Hz.
double coefficient(double steps, double rate) {
    const double w = 20.0 * std::exp2(steps / 256.0) * 3.141592653589793 / rate;
    return (1.0 - w) / (1.0 + w);
}

TEST(StereoPhaser, StagesChangeAtOneHalfAndClearOnlyOnChange) {
    StereoPhaser phaser;
    tick(phaser, 1.0f, 0.0f);
    EXPECT_TRUE(phaser.setStages(0.49f));  // still 2: the tail continues
    EXPECT_GT(std::fabs(tick(phaser, 0.0f, 0.0f).first), 0.01f);
    EXPECT_TRUE(phaser.setStages(0.5f));  // 4: cleared
    EXPECT_LT(std::fabs(tick(phaser, 0.0f, 0.0f).first), 1e-15f);
}

TEST(StereoPhaser, SweepStaysBetweenItsBoundsAndTurns) {
    // A quick sweep over 832..1856 steps. With cleared states the output reveals the square of the
    // first allpass coefficient.
    StereoPhaser phaser;
    phaser.setDepth(1.0f);
    phaser.setRate(1.0f);
    tick(phaser, 0.0f, 0.0f);
    double lowest = 1.0;
    double highest = 0.0;
    for (int i = 0; i < 44100; ++i) {
        phaser.clear();
        const double a = std::sqrt(tick(phaser, 1.0f, 0.0f).first - 1.0);
        lowest = std::fmin(lowest, a);
        highest = std::fmax(highest, a);
    }
    EXPECT_NEAR(highest, coefficient(1344.0 - 512.0, 44100.0), 1e-3);
    EXPECT_NEAR(lowest, coefficient(1344.0 + 512.0, 44100.0), 1e-3);
}

TEST(StereoPhaser, RateChangeKeepsParametersAndCentresTheSweep) {
    const auto configure = [](StereoPhaser& phaser) {
        phaser.setStages(1.0f);
        phaser.setDepth(0.9f);
        phaser.setRate(0.8f);
        phaser.setFeedback(0.6f);
    };
    StereoPhaser used;
    configure(used);
    for (int i = 0; i < 20000; ++i) tick(used, 0.5f, -0.5f);
    ASSERT_TRUE(used.setSampleRate(96000.0f, true));
    used.clear();

    StereoPhaser fresh;
    configure(fresh);
    ASSERT_TRUE(fresh.setSampleRate(96000.0f, true));
    EXPECT_EQ(impulse(used, 20000), impulse(fresh, 20000));
}

}  // namespace
}  // namespace dsp
