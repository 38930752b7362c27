// Tests of falling asleep and waking.
#include <gtest/gtest.h>

#include <cmath>

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
        EXPECT_TRUE(isZero(rig.render(2000)));
        EXPECT_TRUE(rig.engine().asleep());
    }
}

TEST(EngineSleep, AnyMessageWakesAtItsFrame) {
    for (const int status : {0x90, 0x80, 0xA0, 0xB0, 0xD0, 0xE0, 0xF8}) {
        SCOPED_TRACE(status);
        Rig rig(8000.0);
        rig.playOnly(engine::kViola);
        rig.noteOn(60);
        rig.renderSeconds(0.1);
        rig.noteOff(60);
        framesUntilAsleep(rig, 60000);
        ASSERT_TRUE(rig.engine().asleep());
        rig.sendAt(700, status, 60, 64);
        const Sound sound = rig.render(1000);
        for (std::size_t i = 0; i < 700; ++i) ASSERT_EQ(sound.left[i], 0.0f);
        // The filters' states and the dither are heard from that very frame on.
        EXPECT_NE(sound.left[700], 0.0f);
        EXPECT_FALSE(rig.engine().asleep());
        if (status == 0x90) {
            EXPECT_GT(engine_test::rms(sound.left), 1e-3);
        }
    }
}

TEST(EngineSleep, TheVolumeDoesNotReachTheTailBehindTheLastVoice) {
    Sound playing[2];
    Sound tail[2];
    for (const int i : {0, 1}) {
        Rig rig;
        rig.useEffects();
        rig.engine().phaser().setOn(false);
        rig.playOnly(engine::kViola);
        rig.engine().setSectionLevel(engine::kViola, 0.05f);  // below the limiter's threshold
        rig.engine().setVolume(i == 0 ? 0.25f : 0.0625f);
        rig.noteOn(60);
        playing[i] = rig.render(20000);
        rig.noteOff(60);
        rig.render(8000);
        tail[i] = rig.render(20000);
    }
    for (std::size_t n = 0; n < 20000; ++n) {
        ASSERT_EQ(playing[0].left[n], 4.0f * playing[1].left[n]) << n;
    }
    EXPECT_TRUE(sameBits(tail[0], tail[1]));
    EXPECT_GT(engine_test::rms(tail[0].left), 1e-4);
}

}  // namespace
