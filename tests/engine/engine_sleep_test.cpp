// Tests of falling asleep and waking, and of what the panel shows meanwhile.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/engine/rig.h"

namespace {

using engine_test::Rig;
using engine_test::Sound;

// Renders until the engine sleeps; returns the number of frames, at most `limit`.
int framesUntilAsleep(Rig& rig, int limit) {
    int frames = 0;
    while (!rig.engine().asleep() && frames < limit) {
        rig.render(64);
        frames += 64;
    }
    return frames;
}

TEST(EngineSleep, SilenceIsExactFourSecondsAfterTheLastVoiceAtMost) {
    for (const bool effects : {false, true}) {
        SCOPED_TRACE(effects);
        Rig rig;
        if (effects) rig.useEffects();
        rig.playOnly(engine::kViola);
        rig.noteOn(60);
        rig.renderSeconds(0.2);
        rig.noteOff(60);
        const int release = 8000;  // the plain patch's note has ended by then
        rig.render(release);
        EXPECT_FALSE(rig.engine().asleep());
        const int frames = framesUntilAsleep(rig, 5 * 44100);
        EXPECT_LE(frames, 4 * 44100 + 64);
        // A frame counts once during an audible tail and twice in silence.
        if (effects) {
            EXPECT_GE(frames, 4 * 44100 - release - 64);
        }
        EXPECT_EQ(rig.render(2000).peak(), 0.0f);
        EXPECT_TRUE(rig.engine().asleep());
    }
}

TEST(EngineSleep, ANoteWakesAtItsFrame) {
    Rig rig(8000.0);
    rig.playOnly(engine::kViola);
    rig.noteOn(60);
    rig.renderSeconds(0.1);
    rig.noteOff(60);
    framesUntilAsleep(rig, 60000);
    ASSERT_TRUE(rig.engine().asleep());
    rig.noteOn(60);
    EXPECT_FALSE(rig.engine().asleep());
    const Sound sound = rig.render(300);
    // The filters' states and the dither are heard from that very frame on.
    EXPECT_NE(sound.left[0], 0.0f);
    EXPECT_GT(engine_test::rms(sound.left), 1e-3);
}

// A position on the panel follows the taps, whatever drives them.
TEST(EngineChorus, TellsWhereItsTapsStand) {
    Rig rig;
    engine::EnsembleChorus& chorus = rig.engine().chorus();
    chorus.setOn(true);
    chorus.setWide(1.5f);
    rig.render(64);
    for (int tap = 0; tap < 3; ++tap) EXPECT_NEAR(rig.engine().chorusTap(tap), 0.5f, 1e-4f);
    chorus.setSlowDepth(1.0f);
    float lowest = 1.0f;
    float highest = 0.0f;
    for (int i = 0; i < 88200 / 64; ++i) {
        rig.render(64);
        lowest = std::min(lowest, rig.engine().chorusTap(0));
        highest = std::max(highest, rig.engine().chorusTap(0));
    }
    EXPECT_GT(lowest, 0.0f);
    EXPECT_LT(lowest, 0.45f);
    EXPECT_GT(highest, 0.55f);
    EXPECT_LT(highest, 1.0f);
    for (int tap = 0; tap < 3; ++tap) {
        EXPECT_EQ(rig.engine().chorusTap(tap), chorus.tapPosition(tap));
    }
}

}  // namespace
