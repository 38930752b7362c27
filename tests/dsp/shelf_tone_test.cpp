// Tests of the stepped high shelf.
#include "dsp/shelf_tone.h"

#include <gtest/gtest.h>

#include "tests/dsp/measure.h"

namespace dsp {
namespace {

constexpr int kInterval = 490;  // samples between steps at 44100 Hz

float tick(ShelfTone& shelf, float x) {
    float out[2];
    shelf.process(x, out);
    EXPECT_EQ(out[0], out[1]);
    return out[0];
}

void run(ShelfTone& shelf, int samples) {
    for (int i = 0; i < samples; ++i) tick(shelf, 0.0f);
}

TEST(ShelfTone, StepIsItsGainInDecibelsAboveTheCorner) {
    for (const int step : {0, 6, 12, 18, 24}) {
        SCOPED_TRACE(step);
        ShelfTone shelf;
        shelf.setControl(static_cast<float>(step) / 24.0f);
        shelf.setSampleRate(48000.0f);
        ASSERT_EQ(shelf.current(), step);
        const auto gainDb = [&](double hz) {
            shelf.clear();
            const auto block = [&](float x) { return tick(shelf, x); };
            return 20.0 * std::log10(gainAt(hz, 48000.0, block));
        };
        const double db = step - 12.0;
        EXPECT_NEAR(gainDb(50.0), 0.0, 0.05);
        EXPECT_NEAR(gainDb(2300.0), db / 2.0, 0.05);
        EXPECT_NEAR(gainDb(20000.0), db, 0.1);
    }
}

TEST(ShelfTone, WalksOneStepAnInterval) {
    ShelfTone shelf;
    shelf.setControl(0.0f);
    run(shelf, kInterval - 1);
    EXPECT_EQ(shelf.current(), 12);
    run(shelf, 1);
    EXPECT_EQ(shelf.current(), 11);
    run(shelf, 11 * kInterval);
    EXPECT_EQ(shelf.current(), 0);
    shelf.setControl(1.0f);
    run(shelf, 20 * kInterval);
    shelf.setControl(0.75f);  // redirects the walk
    run(shelf, 3 * kInterval);
    EXPECT_EQ(shelf.current(), 18);
    tick(shelf, 1.0f);
    shelf.setControl(0.0f);
    shelf.setSampleRate(96000.0f);  // jumps, and clears the filter
    EXPECT_EQ(shelf.current(), 0);
    EXPECT_EQ(tick(shelf, 0.0f), 0.0f);
}

TEST(ShelfTone, TargetMovedToTheCurrentStepWalksOnAndBack) {
    ShelfTone shelf;
    shelf.setControl(0.0f);
    run(shelf, 2 * kInterval);
    shelf.setControl(10.0f / 24.0f);
    run(shelf, kInterval);
    EXPECT_EQ(shelf.current(), 9);
    run(shelf, kInterval);
    EXPECT_EQ(shelf.current(), 10);
    run(shelf, 2 * kInterval);
    EXPECT_EQ(shelf.current(), 10);
}

TEST(ShelfTone, ControlRoundsAndStaysInRange) {
    ShelfTone shelf;
    const struct {
        float control;
        int target;
    } rows[] = {{0.02f, 0}, {0.021f, 1}, {1.0f, 24}, {1e30f, 24}, {-1e30f, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.control);
        shelf.setControl(row.control);
        EXPECT_EQ(shelf.target(), row.target);
    }
    shelf.setControl(0.75f);
    shelf.setSampleRate(7999.0f);
    shelf.setSampleRate(768000.0f);
    EXPECT_EQ(shelf.target(), 18);
    EXPECT_EQ(shelf.current(), 12);  // no rate was taken
}

}  // namespace
}  // namespace dsp
