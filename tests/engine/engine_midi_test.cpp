// Tests of the effect of MIDI messages on the sound.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "dsp/random.h"
#include "tests/engine/rig.h"

namespace {

using engine_test::Rig;
using engine_test::rms;
using engine_test::Sound;

constexpr double kSilent = 1e-4;  // above the bow noise of an ended envelope
constexpr double kAudible = 1e-3;

bool sounds(Rig& rig) {
    rig.renderSeconds(0.3);  // longer than the plain patch's release
    const double level = rms(rig.renderSeconds(0.05).left);
    EXPECT_TRUE(level < kSilent || level > kAudible) << level;
    return level > kAudible;
}

// Plays a viola note, sends the message, and returns everything heard.
Sound noteThen(int status, int data1, int data2) {
    Rig rig;
    rig.playOnly(engine::kViola);
    rig.sendAt(0, 0x90, 60, 100);
    rig.sendAt(3000, status, data1, data2);
    return rig.render(8000);
}

TEST(EngineMidi, ANoteOnWithoutVelocityIsANoteOff) {
    const Sound released = noteThen(0x80, 60, 64);
    EXPECT_TRUE(sameBits(released, noteThen(0x90, 60, 0)));
    EXPECT_TRUE(sameBits(released, noteThen(0x80, 0x80 | 60, 0x80)));  // data has seven bits
    EXPECT_FALSE(sameBits(released, noteThen(0x90, 62, 0)));
}

TEST(EngineMidi, AllChannelsAreAlike) {
    for (const int status : {0x80, 0x90, 0xB0, 0xE0}) {
        const int data1 = status == 0xB0 ? 123 : 60;
        const Sound first = noteThen(status, data1, 30);
        for (int channel = 1; channel < 16; ++channel) {
            EXPECT_TRUE(sameBits(noteThen(status + channel, data1, 30), first)) << channel;
        }
    }
}

TEST(EngineMidi, OtherMessagesLeaveTheSoundAlone) {
    const Sound held = noteThen(0x90, 0, 100);
    for (const int unplayable : {11, 116, 127}) {
        EXPECT_TRUE(sameBits(noteThen(0x90, unplayable, 100), held)) << unplayable;
    }
    for (const int status : {0x00, 0x40, 0x7F, 0xA0, 0xD0, 0xF0, 0xF8, 0xFF}) {
        EXPECT_TRUE(sameBits(noteThen(status, 60, 60), held)) << status;
    }
    for (const int controller : {0, 1, 7, 10, 121, 127}) {
        EXPECT_TRUE(sameBits(noteThen(0xB0, controller, 60), held)) << controller;
    }
}

TEST(EngineMidi, ResetControllersAreAsTheyBegan) {
    Rig rig;
    Rig plain;
    rig.send(0xB0, 11, 0);
    rig.send(0xB0, 64, 127);
    rig.send(0xE0, 0, 127);
    rig.send(0xB0, 121, 0);
    for (Rig* each : {&rig, &plain}) {
        each->playOnly(engine::kViola);
        each->sendAt(0, 0x90, 60, 100);
        each->sendAt(3000, 0x80, 60);
    }
    EXPECT_TRUE(sameBits(rig.render(8000), plain.render(8000)));
}

TEST(EngineMidi, AllSoundOffEndsVoicesAndTailsAtOnce) {
    Rig rig;
    rig.playOnly(engine::kViola);
    rig.useEffects();
    rig.engine().setSectionSwitch(engine::kCello, 1.0f);
    rig.engine().setSectionLevel(engine::kCello, 1.0f);
    rig.send(0xB0, 64, 127);
    for (const int key : {36, 60}) rig.noteOn(key);
    EXPECT_TRUE(sounds(rig));
    rig.send(0xB0, 120, 0);
    EXPECT_EQ(rig.engine().heldNotes(), 0);
    EXPECT_LT(rms(rig.renderSeconds(0.3).left), 1e-7);
    // The controllers keep their values.
    rig.noteOn(60);
    rig.noteOff(60);
    EXPECT_TRUE(sounds(rig));
}

TEST(EngineMidi, ThePedalHoldsReleasedNotesUntilItIsLifted) {
    for (const engine::Section section : {engine::kViola, engine::kCello}) {
        SCOPED_TRACE(section);
        Rig rig;
        rig.playOnly(section);
        rig.noteOn(40);
        rig.send(0xB0, 64, 64);
        rig.noteOff(40);
        EXPECT_TRUE(sounds(rig));
        rig.send(0xB0, 64, 63);
        EXPECT_FALSE(sounds(rig));

        // A key that is held again when the pedal goes up keeps sounding.
        rig.send(0xB0, 64, 127);
        rig.noteOn(40);
        rig.noteOff(40);
        rig.noteOn(40);
        rig.send(0xB0, 64, 0);
        EXPECT_TRUE(sounds(rig));
        rig.noteOff(40);
        EXPECT_FALSE(sounds(rig));
    }
}

TEST(EngineMidi, AllNotesOffReleasesHeldAndSustainedNotesAlike) {
    for (const bool pedal : {false, true}) {
        Rig rig;
        rig.playOnly(engine::kViola);
        rig.engine().setSectionSwitch(engine::kCello, 1.0f);
        rig.engine().setSectionLevel(engine::kCello, 1.0f);
        if (pedal) rig.send(0xB0, 64, 127);
        for (const int key : {36, 40, 60, 64}) rig.noteOn(key);
        rig.noteOff(40);
        rig.noteOff(64);
        EXPECT_TRUE(sounds(rig));
        rig.send(0xB0, 123, 0);
        EXPECT_FALSE(sounds(rig));
        EXPECT_EQ(rig.engine().heldNotes(), 0);
        rig.send(0xB0, 64, 0);
        for (const int key : {36, 60}) rig.noteOff(key);
        EXPECT_FALSE(sounds(rig));

        // The old keys must not hold the bow noise of the next note.
        rig.noteOn(62);
        EXPECT_TRUE(sounds(rig));
        rig.noteOff(62);
        EXPECT_FALSE(sounds(rig));
    }
}

TEST(EngineMidi, ExpressionScalesTheOutputWithinFiveMilliseconds) {
    Rig rig;
    Rig plain;
    for (Rig* each : {&rig, &plain}) {
        each->playOnly(engine::kViola);
        each->noteOn(60);
    }
    rig.sendAt(1000, 0xB0, 11, 32);
    const Sound sound = rig.render(3000);
    const Sound full = plain.render(3000);
    double gain = 1.0;
    for (std::size_t i = 0; i < 3000; ++i) {
        if (std::fabs(full.left[i]) < 1e-3f) continue;
        const double next = sound.left[i] / full.left[i];
        ASSERT_LE(next, gain + 1e-4);
        if (i < 1000) {
            ASSERT_EQ(next, 1.0);
        }
        if (i < 1000 + 200) {
            ASSERT_GT(next, 32.0 / 127.0);
        }
        if (i > 1000 + 222) {
            ASSERT_NEAR(next, 32.0 / 127.0, 1e-6);
        }
        gain = next;
    }
    rig.send(0xB0, 11, 127);
    plain.render(300);
    rig.render(300);
    EXPECT_TRUE(sameBits(rig.render(1000), plain.render(1000)));
}

TEST(EngineMidi, VelocityScalesThePeak) {
    double levels[2];
    for (const int i : {0, 1}) {
        Rig rig;
        rig.engine().setVelocityAmount(1.0f);
        rig.playOnly(engine::kViola);
        rig.noteOn(69, i == 0 ? 120 : 60);
        rig.renderSeconds(0.1);
        const Sound sound = rig.render(20000);
        levels[i] = std::abs(engine_test::partial(sound.left, 0, 20000, 440.0));
    }
    EXPECT_NEAR(levels[0] / levels[1], 4.0, 0.02);
}

TEST(EngineMidi, HostileBytesLeaveNoTrace) {
    for (const std::uint32_t seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(seed);
        Rig rig;
        for (int s = 0; s < engine::kNumSections; ++s) {
            rig.engine().setSectionSwitch(static_cast<engine::Section>(s), 1.0f);
            rig.engine().setSectionLevel(static_cast<engine::Section>(s), 0.5f);
        }
        rig.engine().setPolyphony(seed == 1 ? 44 : 6);
        dsp::Random random(seed);
        for (int i = 0; i < 4000; ++i) {
            rig.send(random.next() & 0xFF, random.next() & 0xFF, random.next() & 0xFF);
            if (i % 20 == 0) {
                ASSERT_TRUE(isFinite(rig.render(32)));
            }
        }
        rig.send(0xB0, 123, 0);
        EXPECT_FALSE(sounds(rig));
        rig.send(0xB0, 11, 127);
        rig.send(0xB0, 64, 0);
        rig.send(0xE0, 0, 64);
        rig.noteOn(60);
        EXPECT_TRUE(sounds(rig));
        rig.noteOff(60);
        EXPECT_FALSE(sounds(rig));
    }
}

}  // namespace
