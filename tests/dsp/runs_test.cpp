// A run of many frames gives the same bits as single ticks.
#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "dsp/delay_b.h"
#include "dsp/fractional_delay.h"
#include "dsp/lanes/kernels.h"
#include "dsp/limiter.h"
#include "dsp/random.h"
#include "dsp/stereo_phaser.h"
#include "dsp/voice_envelope.h"

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

TEST_F(Runs, OfTheRingExchanged) {
    DelayB one(100), many(100);
    one.setLength(40);
    many.setLength(40);
    for (int run = 0; run < kRuns; ++run) {
        std::vector<float> signal = noise(length());
        std::vector<float> expected = signal;
        for (float& x : expected) x = one.readThenWrite(x);
        many.exchange(signal.data(), static_cast<int>(signal.size()));
        ASSERT_EQ(signal, expected);
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

TEST_F(Runs, OfTheDelayReadBeforeWritten) {
    FractionalDelay one(70.3f, 90), many(70.3f, 90);
    for (int run = 0; run < kRuns; ++run) {
        const std::vector<float> signal = noise(length());
        std::vector<float> expected = signal;
        for (float& x : expected) x = one.tick(x);
        std::vector<float> out(signal.size());
        many.read(out.data(), static_cast<int>(out.size()));
        many.write(signal.data(), static_cast<int>(signal.size()));
        ASSERT_EQ(out, expected);
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

template <int kStages>
void renderRuns(StereoPhaser& phaser, std::vector<StereoFloat>& signal) {
    const int frames = static_cast<int>(signal.size());
    for (int from = 0; from < frames;) {
        const int until = from + phaser.steadySamples(frames - from);
        StereoPhaser::Run<kStages> run(phaser);
        for (; from < until; ++from) signal[from] = run.tick(signal[from]);
        phaser.advance(run);
    }
}

TEST_F(Runs, OfThePhaserWithSettingsBetween) {
    StereoPhaser one, many;
    for (int run = 0; run < kRuns; ++run) {
        const float value = between(0.0f, 0.9f);
        for (StereoPhaser* phaser : {&one, &many}) {
            if (run % 5 == 0) phaser->setRate(value);
            if (run % 7 == 0) phaser->setDepth(value);
            if (run % 3 == 0) phaser->setFeedback(value);
            if (run % 31 == 0) phaser->setStages(value);
        }
        const std::vector<float> left = noise(length()), right = noise(length());
        std::vector<StereoFloat> signal;
        for (const float x : left) signal.push_back(stereo(x, right[0]));
        many.stageCount() == 2 ? renderRuns<2>(many, signal) : renderRuns<4>(many, signal);
        for (std::size_t i = 0; i < left.size(); ++i) {
            float outLeft, outRight;
            one.process(left[i], right[0], &outLeft, &outRight);
            ASSERT_EQ(signal[i][0], outLeft);
            ASSERT_EQ(signal[i][1], outRight);
        }
    }
}

// While movesEvenly promises a ramp, the envelope keeps its stage and the ramp gives its levels.
TEST_F(Runs, OfEnvelopesThatMoveEvenly) {
    int ramps = 0;
    for (int run = 0; run < 3000; ++run) {
        VoiceEnvelope envelope;
        envelope.setAttackTime(between(0.0f, 0.01f));
        envelope.setDecayTime(between(0.0f, 0.01f));
        envelope.setSustain(between(0.0f, 1.0f));
        envelope.setReleaseFactor(between(0.99f, 1.0f));
        envelope.trigger(between(0.001f, 1.0f), 60);
        const int before = static_cast<int>(between(0.0f, 1500.0f));
        for (int i = 0; i < before; ++i) envelope.tick();
        if (run % 2) envelope.noteOff();
        VoiceEnvelope::Ramp ramp;
        const int frames = length();
        if (!envelope.movesEvenly(frames, ramp)) continue;
        ++ramps;
        float level = envelope.level();
        const VoiceEnvelope::Stage stage = envelope.stage();
        for (int i = 0; i < frames; ++i) {
            level = level * ramp.factor + ramp.step;
            ASSERT_EQ(envelope.tick(), level);
            ASSERT_EQ(envelope.stage(), stage);
        }
    }
    EXPECT_GT(ramps, 1000);
}

}  // namespace
}  // namespace dsp
