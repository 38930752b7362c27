// A run of many frames gives the same bits as single ticks, also where the engine never goes. The
// proof in tests/reference compares the rest.
#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "dsp/fractional_delay.h"
#include "dsp/lanes/kernels.h"
#include "dsp/limiter.h"
#include "dsp/random.h"

namespace dsp {
namespace {

constexpr int kRuns = 400;

// Run lengths and signals, the same for every test.
class Runs : public testing::Test {
  protected:
    int length() { return 1 + static_cast<int>(random_() % kMostFrames); }
    float between(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random_);
    }
    std::vector<float> noise(int count, float level = 1.0f) {
        std::vector<float> signal(count);
        for (float& x : signal) x = between(-level, level);
        return signal;
    }

  private:
    std::mt19937 random_{1};
};

TEST_F(Runs, OfRandomNumbersSkipped) {
    Random one;
    Random many;
    for (const std::uint32_t count : {0u, 1u, 2u, 31u, 64u, 100003u}) {
        for (std::uint32_t i = 0; i < count; ++i) one.next();
        many.skip(count);
        EXPECT_EQ(one.state(), many.state());
    }
}

// Includes tiny delays, delays longer than the line, and refused ones.
TEST_F(Runs, OfTheDelaySwept) {
    FractionalDelay one(20.0f, 100), many(20.0f, 100);
    for (int run = 0; run < kRuns; ++run) {
        std::vector<float> signal = noise(length(), run % 7 == 0 ? 1e-30f : 1.0f);
        std::vector<float> delays;
        const float highest = run % 3 == 0 ? 103.0f : 100.0f;
        for (std::size_t i = 0; i < signal.size(); ++i) {
            delays.push_back(run % 5 == 0 ? between(-0.5f, 1.5f) : between(0.0f, highest));
        }
        delays.resize(delays.size() + kMostLanes);
        std::vector<float> expected = signal;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            one.setDelay(delays[i]);
            expected[i] = one.tick(expected[i]);
        }
        many.sweep(delays.data(), signal.data(), static_cast<int>(signal.size()));
        ASSERT_EQ(signal, expected);
        ASSERT_EQ(one.delay(), many.delay());
    }
}

TEST_F(Runs, OfTheLimiter) {
    PeakLimiter one, many;
    for (int run = 0; run < kRuns; ++run) {
        std::vector<float> left = noise(3 * length(), run % 4 == 0 ? 0.01f : 4.0f);
        if (run % 50 == 0) left[0] = INFINITY;
        if (run % 70 == 0) left[0] = NAN;
        std::vector<float> right(left.size(), 0.25f);
        std::vector<float> expectedLeft = left;
        std::vector<float> expectedRight = right;
        int expectedQuiet = 0;
        for (std::size_t i = 0; i < left.size(); ++i) {
            one.process(expectedLeft[i], expectedRight[i]);
            expectedQuiet += one.follower() < 0.5;
        }
        const int frames = static_cast<int>(left.size());
        EXPECT_EQ(many.render(left.data(), right.data(), frames, 0.5), expectedQuiet);
        ASSERT_TRUE(std::equal(left.begin() + 1, left.end(), expectedLeft.begin() + 1));
        ASSERT_EQ(right, expectedRight);
        ASSERT_EQ(one.follower(), many.follower());
    }
}

}  // namespace
}  // namespace dsp
