// Tests of the delay lines, fractional and whole.
#include <limits>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "dsp/delay_b.h"
#include "dsp/fractional_delay.h"
#include "dsp/lanes/kernels.h"
#include "tests/dsp/measure.h"

namespace dsp {
namespace {

// Impulse response of the line.
std::vector<float> impulse(FractionalDelay& line, int samples) {
    std::vector<float> out;
    for (int i = 0; i < samples; ++i) out.push_back(line.tick(i == 0 ? 1.0f : 0.0f));
    return out;
}

void expectNear(const std::vector<float>& actual, const std::vector<float>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) EXPECT_NEAR(actual[i], expected[i], 1e-20f);
}

TEST(FractionalDelay, DelaysByWholeAndPartSamples) {
    const struct {
        float delay;
        std::vector<float> response;
    } rows[] = {{0.0f, {1.0f, 0.0f, 0.0f, 0.0f, 0.0f}},
                {0.25f, {0.75f, 0.25f, 0.0f, 0.0f, 0.0f}},
                {2.0f, {0.0f, 0.0f, 1.0f, 0.0f, 0.0f}},
                {2.5f, {0.0f, 0.0f, 0.5f, 0.5f, 0.0f}},
                {4.0f, {0.0f, 0.0f, 0.0f, 0.0f, 1.0f}},
                {5.0f, {0.0f, 0.0f, 0.0f, 0.0f, 1.0f}}};  // counts as the capacity
    for (const auto& row : rows) {
        SCOPED_TRACE(row.delay);
        for (int start = 0; start < 5; ++start) {
            FractionalDelay line(row.delay, 4);
            for (int i = 0; i < start; ++i) line.tick(0.0f);
            line.setDelay(row.delay);
            expectNear(impulse(line, 5), row.response);
        }
    }
}

TEST(FractionalDelay, RefusesADelayOutOfRange) {
    FractionalDelay line(2.0f, 4);
    line.tick(0.0f);
    for (const float bad : {-1.0f, 5.1f, kHostile[0], kHostile[1]}) {
        SCOPED_TRACE(bad);
        line.setDelay(bad);
        EXPECT_EQ(line.delay(), 2.0f);
        expectNear(impulse(line, 3), {0.0f, 0.0f, 1.0f});
    }
    FractionalDelay unset(-1.0f, 4);
    expectNear(impulse(unset, 2), {1.0f, 0.0f});
}

// A sweep of many delays gives what single ones do, be they tiny, refused or longer than the line.
TEST(FractionalDelay, SweepsAsItTicks) {
    constexpr float kDelays[] = {20.0f, 1e-9f, -0.5f, 1.0f, 37.3f, 99.5f, 100.0f, 103.0f, 2.75f};
    FractionalDelay one(20.0f, 100), many(20.0f, 100);
    for (int run = 0; run < 50; ++run) {
        std::vector<float> delays(17 + kMostLanes), signal(17), out(17 + kMostLanes), expected(17);
        for (int i = 0; i < 17; ++i) {
            // Every other run is fit for whole vectors.
            delays[i] = run % 2 ? 3.0f + static_cast<float>(i * run % 79) : kDelays[(i + run) % 9];
            signal[i] = static_cast<float>(i * run % 23 - 11) * (run % 7 ? 0.1f : 1e-31f);
            one.setDelay(delays[i]);
            expected[i] = one.tick(signal[i]);
        }
        many.sweep(delays.data(), signal.data(), out.data(), 17);
        out.resize(17);
        ASSERT_EQ(out, expected) << run;
        ASSERT_EQ(one.delay(), many.delay());
    }
}

TEST(FractionalDelay, ReadsInsideItsMemoryForTheSmallestDelay) {
    FractionalDelay line(1e-9f, 1922);
    expectNear(impulse(line, 2), {1.0f, 0.0f});
    FractionalDelay empty(0.0f, -3);
    EXPECT_EQ(empty.tick(0.5f), 0.5f);
}

TEST(FractionalDelay, ResetEmptiesTheLineAndKeepsTheDelay) {
    FractionalDelay line(2.5f, 4);
    for (int i = 0; i < 7; ++i) line.tick(1.0f);
    line.reset();
    EXPECT_EQ(line.delay(), 2.5f);
    expectNear(impulse(line, 5), {0.0f, 0.0f, 0.5f, 0.5f, 0.0f});
    line.tick(1.0f);
    line.clear();
    for (int i = 0; i < 20; ++i) line.tick(0.0f);
    EXPECT_EQ(line.tick(0.0f), -1e-38f);  // the offset of a silent line
}

TEST(FractionalDelay, WorksAlikeWithLessOfItsMemory) {
    FractionalDelay whole(0.0f, 40);
    FractionalDelay part(0.0f, 1000);
    part.setCapacity(40);
    for (const float delay : {7.3f, 40.0f, 41.0f}) {
        whole.setDelay(delay);
        part.setDelay(delay);
        EXPECT_EQ(impulse(whole, 100), impulse(part, 100)) << delay;
    }
    part.setCapacity(2000);
    part.setDelay(1000.0f);
    EXPECT_EQ(part.delay(), 1000.0f);
    part.setCapacity(-1);
    EXPECT_EQ(part.delay(), 0.0f);
}

TEST(DelayB, DelaysByItsLength) {
    const auto ring = std::make_unique<DelayB>();
    ring->setLength(3);
    for (int i = 1; i <= 10; ++i) {
        EXPECT_EQ(ring->readThenWrite(static_cast<float>(i)), i > 3 ? i - 3.0f : 0.0f);
    }
}

TEST(DelayB, BoundsItsLength) {
    const auto ring = std::make_unique<DelayB>();
    ring->setLength(0);
    EXPECT_EQ(ring->length(), 1);
    EXPECT_EQ(ring->readThenWrite(0.5f), 0.0f);
    EXPECT_EQ(ring->readThenWrite(0.0f), 0.5f);
    ring->setLength(std::numeric_limits<int>::max());
    EXPECT_EQ(ring->length(), DelayB::kCapacity);
    for (int i = 0; i < DelayB::kCapacity; ++i) ring->readThenWrite(1.0f);
    EXPECT_EQ(ring->readThenWrite(0.0f), 1.0f);

    // Shorten the ring while the index is past the new end; clear must still empty all of it.
    for (int i = 0; i < 1000; ++i) ring->readThenWrite(1.0f);
    ring->setLength(10);
    for (int i = 0; i < 11; ++i) ring->readThenWrite(2.0f);
    EXPECT_EQ(ring->readThenWrite(2.0f), 2.0f);
    ring->clear();
    ring->setLength(DelayB::kCapacity);
    for (int i = 0; i < DelayB::kCapacity; ++i) ASSERT_EQ(ring->readThenWrite(1.0f), 0.0f);
}

}  // namespace
}  // namespace dsp
