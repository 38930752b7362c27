// Tests of the engine's pitches, measured in its output.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/engine/rig.h"

namespace {

using engine::Waveform;
using engine_test::keyHz;
using engine_test::partial;
using engine_test::Rig;
using engine_test::Sound;

constexpr float kKeySplitTop = 14.25f / 11.0f;  // key 81

double cents(double hz, double expected) {
    return 1200.0 * std::log2(hz / expected);
}

// Plays the key and checks its fundamental: the expected partial is there and in tune, and nothing
// sounds an octave below.
void expectPitch(Rig& rig, int key, double expectedHz) {
    SCOPED_TRACE(testing::Message() << "key " << key << ", " << expectedHz << " Hz");
    rig.noteOn(key);
    rig.renderSeconds(0.1);
    const Sound sound = rig.render(expectedHz < 60.0 ? 40000 : 20000);
    rig.noteOff(key);
    rig.renderSeconds(0.1);

    const std::size_t window = sound.left.size();
    const double level = std::abs(partial(sound.left, 0, window, expectedHz));
    EXPECT_GT(level, 1e-5);
    EXPECT_LT(std::abs(partial(sound.left, 0, window, expectedHz * 0.5)), level * 0.15);
    EXPECT_NEAR(cents(engine_test::partialHz(sound.left, expectedHz), expectedHz), 0.0, 1.0);
}

TEST(EnginePitch, ViolaSoundsTheKeyAndViolinAnOctaveAbove) {
    for (const Waveform waveform :
         {Waveform::kFeedback, Waveform::kTable, Waveform::kSquaredFeedback}) {
        SCOPED_TRACE(static_cast<int>(waveform));
        Rig rig;
        rig.engine().setWaveform(waveform);
        for (const int key : {12, 24, 35, 45, 57, 69, 81, 93, 96}) {
            rig.playOnly(engine::kViola);
            expectPitch(rig, key, keyHz(key));
            rig.playOnly(engine::kViolin);
            expectPitch(rig, key, 2.0 * keyHz(key));
        }
        rig.playOnly(engine::kViola);
        for (const int key : {97, 105, 115}) expectPitch(rig, key, keyHz(key - 12));
    }
}

TEST(EnginePitch, BrassAndHornSoundTheKey) {
    for (const engine::Section section : {engine::kBrass, engine::kHorn}) {
        Rig rig;
        rig.playOnly(section);
        expectPitch(rig, 69, 440.0);
    }
}

TEST(EnginePitch, CelloSoundsTheKeyAndContrabassAnOctaveBelow) {
    Rig rig;
    rig.engine().setKeySplit(kKeySplitTop);
    for (const int key : {24, 36, 45, 60, 80}) {
        rig.playOnly(engine::kCello);
        expectPitch(rig, key, keyHz(key));
        rig.playOnly(engine::kContrabass);
        expectPitch(rig, key, 0.5 * keyHz(key));
    }
}

TEST(EnginePitch, TheTopKeysRepeatTheOctaveBelow) {
    for (const Waveform waveform :
         {Waveform::kFeedback, Waveform::kTable, Waveform::kSquaredFeedback}) {
        Sound sounds[2];
        for (const int i : {0, 1}) {
            Rig rig;
            rig.engine().setWaveform(waveform);
            rig.playOnly(engine::kViola);
            rig.noteOn(i == 0 ? 97 : 85);
            sounds[i] = rig.render(4000);
        }
        EXPECT_TRUE(sameBits(sounds[0], sounds[1]));
        EXPECT_FALSE(isZero(sounds[0]));
    }
}

TEST(EnginePitch, BendAndMasterPitchReachOneSemitone) {
    struct Case {
        int bend;  // -1: none
        float offset;
        double semitones;
    };
    const Case cases[] = {{0, 0.0f, -1.0},   {127, 0.0f, 1.0}, {64, 0.0f, 0.00787}, {-1, 1.0f, 1.0},
                          {-1, -1.0f, -1.0}, {127, 0.5f, 1.5}, {0, -1.0f, -2.0}};
    for (const Waveform waveform : {Waveform::kFeedback, Waveform::kTable}) {
        for (const Case& c : cases) {
            SCOPED_TRACE(testing::Message() << c.bend << " with " << c.offset);
            Rig rig;
            rig.engine().setWaveform(waveform);
            rig.playOnly(engine::kViola);
            rig.send(0xE0, 0, 30);  // cancelled by the next call
            rig.engine().setPitchOffset(c.offset);
            if (c.bend >= 0) rig.send(0xE0, 5, c.bend);
            expectPitch(rig, 60, keyHz(60) * std::exp2(c.semitones / 12.0));
        }
    }
}

TEST(EnginePitch, TheBassReturnsToTheHeldKeyWithoutANewAttack) {
    Rig rig;
    rig.playOnly(engine::kCello);
    rig.engine().setSustain(0.25f);
    rig.engine().setDecayTime(0.01f);
    rig.noteOn(36);
    rig.renderSeconds(0.1);
    const Sound before = rig.render(20000);
    rig.noteOn(40);
    rig.renderSeconds(0.1);
    const Sound above = rig.render(20000);
    EXPECT_NEAR(cents(engine_test::partialHz(above.left, keyHz(40)), keyHz(40)), 0.0, 1.0);
    rig.noteOff(40);
    const Sound glide = rig.render(2000);
    const Sound after = rig.render(20000);
    EXPECT_NEAR(cents(engine_test::partialHz(after.left, keyHz(36)), keyHz(36)), 0.0, 1.0);
    EXPECT_NEAR(engine_test::rms(after.left) / engine_test::rms(before.left), 1.0, 0.05);
    EXPECT_LT(engine_test::rms(glide.left), engine_test::rms(before.left) * 1.2);
}

}  // namespace
