// Tests of the DC blocker.
#include "dsp/dc_blocker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

TEST(DcBlocker, PassesAStepAndLetsItFade) {
    dsp::DcBlocker blocker;
    blocker.setRate(48000.0);
    const float pole = static_cast<float>(1.0 - 251.32741 / 48000.0);
    EXPECT_EQ(blocker.tick(1.0f), 1.0f);
    EXPECT_EQ(blocker.tick(1.0f), pole);
    EXPECT_EQ(blocker.tick(1.0f), pole * pole);
    float y = 0.0f;
    for (int i = 0; i < 24000; ++i) y = blocker.tick(1.0f);
    EXPECT_LT(std::fabs(y), 1e-6f);
    blocker.clear();
    EXPECT_EQ(blocker.tick(0.0f), 0.0f);
}

TEST(DcBlocker, HasItsCornerAtFortyHertzAtEveryRate) {
    for (const double rate : {44100.0, 96000.0, 768000.0}) {
        SCOPED_TRACE(rate);
        dsp::DcBlocker blocker;
        blocker.setRate(rate);
        float peak = 0.0f;
        const int frames = static_cast<int>(rate / 2.0);
        for (int i = 0; i < frames; ++i) {
            const double phase = 2.0 * 3.14159265358979 * 40.0 * i / rate;
            const float y = blocker.tick(static_cast<float>(std::sin(phase)));
            if (i > frames / 2) peak = std::max(peak, y);
        }
        EXPECT_NEAR(peak, std::sqrt(0.5f), 0.005f);
    }
}

}  // namespace
