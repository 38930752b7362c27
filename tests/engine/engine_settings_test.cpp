// Tests of the effect of settings on the sound.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/engine/rig.h"

namespace {

using engine::Waveform;
using engine_test::keyHz;
using engine_test::partial;
using engine_test::Rig;
using engine_test::rms;
using engine_test::Sound;

constexpr engine::Section kSections[] = {engine::kViola, engine::kViolin,     engine::kBrass,
                                         engine::kHorn,  engine::kContrabass, engine::kCello};

TEST(EngineSettings, ASectionSoundsWhenItIsOnOnly) {
    Rig off;
    off.noteOn(40);
    off.renderSeconds(0.1);
    const double noise = rms(off.render(4000).left);
    for (const engine::Section section : kSections) {
        SCOPED_TRACE(section);
        Rig rig;
        rig.playOnly(section);
        rig.noteOn(40);
        rig.renderSeconds(0.1);
        EXPECT_GT(rms(rig.render(4000).left), 4.0 * noise);
        rig.engine().setSectionSwitch(section, 0.5f);
        rig.renderSeconds(0.5);
        EXPECT_NEAR(rms(rig.render(4000).left), noise, 0.5 * noise);
    }
}

TEST(EngineSettings, WithAllSectionsOffOnlyTheBowNoiseRemains) {
    Sound sounds[2];
    for (const int i : {0, 1}) {
        Rig rig;
        rig.noteOn(i == 0 ? 60 : 67);
        sounds[i] = rig.render(8000);
        rig.noteOff(i == 0 ? 60 : 67);
        rig.renderSeconds(0.5);
        EXPECT_LT(rms(rig.render(1000).left), 0.01 * rms(sounds[i].left));
    }
    EXPECT_TRUE(sameBits(sounds[0], sounds[1]));
    EXPECT_GT(rms(sounds[0].left), 1e-5);
}

TEST(EngineSettings, TheSplitKeyBelongsToTheUpperHalf) {
    struct Case {
        float ratio;
        int splitKey;
    };
    const Case cases[] = {{3.0f / 11.0f, 36},  {5.25f / 11.0f, 45}, {6.0f / 11.0f, 48},
                          {8.25f / 11.0f, 57}, {9.0f / 11.0f, 60},  {11.25f / 11.0f, 69},
                          {12.0f / 11.0f, 72}, {14.25f / 11.0f, 81}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.splitKey);
        for (const int key : {c.splitKey - 1, c.splitKey}) {
            Rig rig;
            rig.playOnly(engine::kCello);
            rig.engine().setKeySplit(c.ratio);
            rig.noteOn(key);
            rig.renderSeconds(0.1);
            const Sound sound = rig.render(8000);
            const double level = std::abs(partial(sound.left, 0, 8000, keyHz(key)));
            EXPECT_EQ(level > 1e-3, key < c.splitKey) << level;
        }
    }
}

TEST(EngineSettings, ANewSplitAndSwitchedOffSectionsStillReleaseTheBass) {
    for (const bool split : {true, false}) {
        Rig rig;
        rig.playOnly(engine::kCello);
        rig.noteOn(40);
        rig.renderSeconds(0.1);
        if (split) {
            rig.engine().setKeySplit(6.0f / 11.0f);
        } else {
            rig.engine().setSectionSwitch(engine::kCello, 0.0f);
            rig.noteOff(40);
            rig.engine().setSectionSwitch(engine::kCello, 1.0f);
        }
        rig.renderSeconds(0.3);
        const Sound sound = rig.render(8000);
        EXPECT_LT(std::abs(partial(sound.left, 0, 8000, keyHz(40))), 1e-4);
    }
}

TEST(EngineSettings, AWaveformSilencesTheInstrumentEvenWhenNothingChanges) {
    Rig rig;
    rig.playOnly(engine::kViola);
    rig.engine().setSectionSwitch(engine::kCello, 1.0f);
    rig.engine().setSectionLevel(engine::kCello, 1.0f);
    rig.engine().setRelease({1e6});  // too long to end here
    for (const Waveform waveform :
         {Waveform::kFeedback, Waveform::kFeedback, Waveform::kTable, Waveform::kSquaredFeedback}) {
        rig.noteOn(40);
        rig.renderSeconds(0.1);
        EXPECT_GT(rms(rig.render(1000).left), 1e-3);
        rig.engine().setWaveform(waveform);
        rig.renderSeconds(0.2);  // lets the filters fall silent
        EXPECT_LT(rms(rig.render(1000).left), 1e-7);
        rig.noteOff(40);
        EXPECT_LT(rms(rig.render(1000).left), 1e-7);
    }
}

TEST(EngineSettings, WithASharedEnvelopeTheGainGrowsWithTheVoicesUpToOne) {
    constexpr double kGains[] = {2.5 / 6.0, 5.0 / 6.0, 1.0, 1.0};
    double levels[4];
    for (int voices = 1; voices <= 4; ++voices) {
        Rig rig;
        rig.engine().setPolyphony(6);
        rig.engine().setSharedEnvelope(1.0f);
        rig.playOnly(engine::kViola);
        rig.engine().setSectionLevel(engine::kViola, 0.2f);  // far above the bow noise
        for (int i = 0; i < voices; ++i) rig.noteOn(69 + 3 * i);
        rig.renderSeconds(0.1);
        const Sound sound = rig.render(20000);
        levels[voices - 1] = std::abs(partial(sound.left, 0, 20000, 440.0));
    }
    for (int i = 1; i < 4; ++i) {
        SCOPED_TRACE(i + 1);
        EXPECT_NEAR(levels[i] / levels[0], kGains[i] / kGains[0], 0.01);
    }
}

TEST(EngineSettings, ANewPolyphonyReleasesTheNotesAndEveryCountPlays) {
    Rig rig;
    rig.playOnly(engine::kViola);
    EXPECT_EQ(rig.engine().polyphony(), 43);
    for (const int voices : {44, 6, 25, 43}) {
        SCOPED_TRACE(voices);
        for (int key = 12; key <= 115; ++key) rig.noteOn(key);
        EXPECT_GT(rms(rig.render(1000).left), 1e-3);
        rig.engine().setPolyphony(voices);
        EXPECT_EQ(rig.engine().polyphony(), voices);
        rig.renderSeconds(0.3);
        EXPECT_LT(rms(rig.render(1000).left), 1e-4);
    }
}

TEST(EngineSettings, ANoteOffOfAnUnheldKeyLeavesTheSoundAlone) {
    for (const int voices : {6, 43, 44}) {
        SCOPED_TRACE(voices);
        Sound sounds[2];
        for (const int i : {0, 1}) {
            Rig rig;
            rig.playOnly(engine::kViola);
            rig.engine().setPolyphony(voices);
            rig.noteOn(60);
            rig.render(1000);
            if (i == 1) rig.noteOff(62);
            sounds[i] = rig.render(4000);
        }
        EXPECT_TRUE(sameBits(sounds[0], sounds[1]));
    }
}

// The reverb's combs keep their filter states, so the tail gets shorter but does not stop.
TEST(EngineSettings, AResetSilencesVoicesPedalAndEffects) {
    for (const bool reverb : {false, true}) {
        Rig rig;
        rig.useEffects();
        rig.engine().reverb().setOn(reverb);
        rig.playOnly(engine::kViola);
        rig.engine().setRelease({1e6});
        rig.send(0xB0, 64, 127);
        for (const int key : {40, 60, 64}) rig.noteOn(key);
        const double before = rms(rig.renderSeconds(0.5).left);
        rig.engine().setSampleRate(engine_test::kRate);  // as a new program does
        rig.engine().reset();
        EXPECT_LT(rms(rig.renderSeconds(0.5).left), reverb ? 0.15 * before : 1e-8);
    }
}

TEST(EngineSettings, AFaultSilencesItsBlockAndIsGone) {
    for (const bool effects : {false, true}) {
        Rig rig;
        if (effects) rig.useEffects();
        rig.playOnly(engine::kViola);
        rig.noteOn(60);
        rig.render(1024);
        rig.engine().setSectionLevel(engine::kViola, std::numeric_limits<float>::quiet_NaN());
        EXPECT_TRUE(isZero(rig.render(512)));
        rig.engine().setSectionLevel(engine::kViola, 1.0f);
        rig.noteOn(60);
        const Sound sound = rig.render(8192);
        EXPECT_TRUE(isFinite(sound));
        EXPECT_GT(rms(sound.left), 1e-3);
    }
}

}  // namespace
