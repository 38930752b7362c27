// Tests of settings, rates, resets and faults.
#include <gtest/gtest.h>

#include <array>
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

TEST(EngineSettings, TheSplitKeyBelongsToTheUpperHalf) {
    for (const int key : {47, 48}) {
        Rig rig;
        rig.playOnly(engine::kCello);
        rig.engine().setKeySplit(6.0f / 11.0f);  // key 48
        rig.noteOn(key);
        rig.renderSeconds(0.1);
        const Sound sound = rig.render(8000);
        EXPECT_EQ(std::abs(partial(sound.left, 0, 8000, keyHz(key))) > 1e-3, key == 47);
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
    rig.switchOn(engine::kCello);
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

TEST(EngineSettings, ThePeaksAreThoseOfTheOutput) {
    Rig rig;
    rig.playOnly(engine::kViola);
    rig.useEffects();
    for (const int key : {48, 55, 60, 64}) rig.noteOn(key);
    rig.renderSeconds(0.1);
    rig.engine().takePeaks();
    const Sound sound = rig.render(3000);
    const auto peakOf = [](const std::vector<float>& samples) {
        float peak = 0.0f;
        for (const float sample : samples) peak = std::max(peak, std::abs(sample));
        return peak;
    };
    const engine::StereoPeaks peaks = rig.engine().takePeaks();
    EXPECT_EQ(peaks.left, peakOf(sound.left));
    EXPECT_EQ(peaks.right, peakOf(sound.right));
    EXPECT_NE(peaks.left, peaks.right);
    EXPECT_EQ(rig.engine().takePeaks().left, 0.0f);
}

TEST(EngineSettings, ARateChangeReleasesTheUpperVoicesAndKeepsTheBass) {
    Rig rig;
    rig.playOnly(engine::kViola);
    rig.switchOn(engine::kContrabass);
    rig.noteOn(40);
    rig.noteOn(60);
    rig.renderSeconds(0.1);
    const auto levels = [](const Sound& sound) {
        const auto level = [&](int key) {
            return std::abs(partial(sound.left, 0, 20000, keyHz(key)));
        };
        return std::pair(level(60), level(28));
    };
    const auto before = levels(rig.render(20000));
    rig.engine().setSampleRate(engine_test::kRate);  // the same one
    rig.renderSeconds(0.3);
    const auto after = levels(rig.render(20000));
    EXPECT_GT(before.first, 1e-3);
    EXPECT_LT(after.first, 0.03 * before.first);
    EXPECT_NEAR(after.second / before.second, 1.0, 0.05);
}

TEST(EngineSettings, UnusableRatesAreRefused) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Rig rig;
    for (const double rate : {0.0, -44100.0, 999.0, 768001.0, kInfinity, -kInfinity, double{NAN}}) {
        rig.engine().setSampleRate(rate);
        EXPECT_EQ(rig.engine().sampleRate(), engine_test::kRate);
        EXPECT_EQ(Rig(rate).engine().sampleRate(), engine_test::kRate);
    }
    for (const double rate : {1000.0, 768000.0}) EXPECT_EQ(Rig(rate).engine().sampleRate(), rate);
}

// The reverb's combs keep their filter states, so the tail gets shorter but does not stop.
TEST(EngineReset, SilencesVoicesPedalAndEffects) {
    for (const bool reverb : {false, true}) {
        Rig rig;
        rig.useEffects();
        rig.engine().reverb().setOn(reverb);
        rig.playOnly(engine::kViola);
        rig.engine().setRelease({1e6});
        rig.engine().setPedal(true);
        for (const int key : {40, 60, 64}) rig.noteOn(key);
        const double before = rms(rig.renderSeconds(0.5).left);
        rig.engine().setSampleRate(engine_test::kRate);  // as a new program does
        rig.engine().reset();
        EXPECT_LT(rms(rig.renderSeconds(0.5).left), reverb ? 0.15 * before : 1e-8);
    }
}

TEST(EngineFault, SilencesItsBlockAndIsGone) {
    for (const bool effects : {false, true}) {
        Rig rig;
        if (effects) rig.useEffects();
        rig.playOnly(engine::kViola);
        rig.noteOn(60);
        rig.render(1024);
        rig.engine().setSectionLevel(engine::kViola, std::numeric_limits<float>::quiet_NaN());
        EXPECT_EQ(rig.render(512).peak(), 0.0f);
        rig.engine().setSectionLevel(engine::kViola, 1.0f);
        rig.noteOn(60);
        const Sound sound = rig.render(8192);
        EXPECT_TRUE(std::isfinite(sound.peak()));
        EXPECT_GT(rms(sound.left), 1e-3);
    }
}

TEST(EngineFault, OnOneSideOrInOneFrameSilencesBoth) {
    for (const float bad : {NAN, INFINITY, -INFINITY}) {
        for (const std::size_t at : {0, 3, 4, 7}) {
            SCOPED_TRACE(testing::Message() << bad << " at " << at);
            Rig rig;
            std::array<float, 8> block;
            block.fill(0.5f);
            block[at] = bad;
            rig.engine().endBlock(&block[0], &block[4], 4);
            EXPECT_EQ(block, (std::array<float, 8>{}));
        }
    }
}

}  // namespace
