// Tests of what notes, pedal and controllers do to the sound.
#include <gtest/gtest.h>

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

TEST(EngineNotes, ResetControllersAreAsTheyBegan) {
    Rig rig;
    Rig plain;
    rig.engine().setExpression(0.0f);
    rig.engine().setPedal(true);
    rig.engine().setPitchBend(127);
    rig.engine().resetControllers();
    Sound heard[2];
    for (Rig* each : {&rig, &plain}) {
        each->playOnly(engine::kViola);
        each->noteOn(60);
        each->render(3000);
        each->noteOff(60);
        heard[each == &rig] = each->render(5000);
    }
    EXPECT_TRUE(heard[0] == heard[1]);
}

TEST(EngineNotes, AllSoundOffEndsVoicesAndTailsAtOnce) {
    Rig rig;
    rig.playOnly(engine::kViola);
    rig.useEffects();
    rig.switchOn(engine::kCello);
    rig.engine().setPedal(true);
    for (const int key : {36, 60}) rig.noteOn(key);
    EXPECT_TRUE(sounds(rig));
    rig.engine().allSoundOff();
    EXPECT_EQ(rig.engine().heldNotes(), 0);
    EXPECT_LT(rms(rig.renderSeconds(0.3).left), 1e-7);
    // The controllers keep their values.
    rig.noteOn(60);
    rig.noteOff(60);
    EXPECT_TRUE(sounds(rig));
}

TEST(EngineNotes, ThePedalHoldsReleasedNotesUntilItIsLifted) {
    for (const engine::Section section : {engine::kViola, engine::kCello}) {
        SCOPED_TRACE(section);
        Rig rig;
        rig.playOnly(section);
        rig.noteOn(40);
        rig.engine().setPedal(true);
        rig.noteOff(40);
        EXPECT_TRUE(sounds(rig));
        rig.engine().setPedal(false);
        EXPECT_FALSE(sounds(rig));

        // A key that is held again when the pedal goes up keeps sounding.
        rig.engine().setPedal(true);
        rig.noteOn(40);
        rig.noteOff(40);
        rig.noteOn(40);
        rig.engine().setPedal(false);
        EXPECT_TRUE(sounds(rig));
        rig.noteOff(40);
        EXPECT_FALSE(sounds(rig));
    }
}

TEST(EngineNotes, AllNotesOffReleasesHeldAndSustainedNotesAlike) {
    for (const bool pedal : {false, true}) {
        Rig rig;
        rig.playOnly(engine::kViola);
        rig.switchOn(engine::kCello);
        rig.engine().setPedal(pedal);
        for (const int key : {36, 40, 60, 64}) rig.noteOn(key);
        rig.noteOff(40);
        rig.noteOff(64);
        EXPECT_EQ(rig.engine().heldNotes(), 2);
        EXPECT_EQ(rig.engine().lastKey(), 64);
        EXPECT_TRUE(sounds(rig));
        rig.engine().allNotesOff();
        EXPECT_FALSE(sounds(rig));
        EXPECT_EQ(rig.engine().heldNotes(), 0);
        rig.engine().setPedal(false);
        for (const int key : {36, 60}) rig.noteOff(key);
        EXPECT_EQ(rig.engine().heldNotes(), 0);
        EXPECT_FALSE(sounds(rig));

        // The old keys must not hold the bow noise of the next note.
        rig.noteOn(62);
        EXPECT_TRUE(sounds(rig));
        rig.noteOff(62);
        EXPECT_FALSE(sounds(rig));
    }
}

TEST(EngineNotes, UnplayableKeysAreHeldButNotHeard) {
    Rig rig;
    rig.playOnly(engine::kViola);
    for (const int key : {11, 116, 127}) {
        rig.noteOn(key);
        EXPECT_EQ(rig.engine().heldNotes(), 1);
        EXPECT_EQ(rig.engine().lastKey(), -1);
        EXPECT_FALSE(sounds(rig));
        rig.noteOff(key);
    }
}

}  // namespace
