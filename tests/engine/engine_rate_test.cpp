// Tests of sample rates, block sizes and repeatability.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/engine/rig.h"

namespace {

using engine::Waveform;
using engine_test::keyHz;
using engine_test::partial;
using engine_test::Rig;
using engine_test::Sound;

void playScene(Rig& rig) {
    rig.useEffects();
    for (int s = 0; s < engine::kNumSections; ++s) {
        rig.engine().setSectionSwitch(static_cast<engine::Section>(s), 1.0f);
        rig.engine().setSectionLevel(static_cast<engine::Section>(s), 0.4f);
    }
    rig.engine().setPolyphony(6);
    int frame = 0;
    for (const int key : {40, 52, 59, 64, 68, 71, 76, 36, 43, 83}) {
        rig.sendAt(frame, 0x90, key, 40 + key);
        frame += 17 * 64;
    }
    rig.sendAt(frame, 0xE0, 0, 100);
    rig.sendAt(frame, 0xB0, 11, 80);
    for (const int key : {52, 43, 36, 40, 83}) {
        frame += 512;
        rig.sendAt(frame, 0x80, key);
    }
}

TEST(EngineRender, BlocksOfAnySizeGiveTheSameBits) {
    Sound first;
    for (const int block : {512, 1, 17, 64, 512, 16384}) {
        SCOPED_TRACE(block);
        Rig rig;
        playScene(rig);
        const Sound sound = rig.render(30000, block);
        if (first.left.empty()) first = sound;
        EXPECT_TRUE(sameBits(sound, first));
    }
    EXPECT_GT(engine_test::rms(first.left), 1e-2);
    EXPECT_GT(engine_test::rms(first.right), 1e-2);
}

TEST(EngineRate, ARateChangeReleasesTheUpperVoicesAndKeepsTheBass) {
    Rig rig;
    rig.playOnly(engine::kViola);
    rig.engine().setSectionSwitch(engine::kContrabass, 1.0f);
    rig.engine().setSectionLevel(engine::kContrabass, 1.0f);
    rig.noteOn(40);
    rig.noteOn(60);
    rig.renderSeconds(0.1);
    const Sound before = rig.render(20000);
    rig.engine().setSampleRate(engine_test::kRate);  // the same one
    rig.renderSeconds(0.3);
    const Sound after = rig.render(20000);
    const auto level = [](const Sound& sound, double hz) {
        return std::abs(partial(sound.left, 0, 20000, hz));
    };
    EXPECT_GT(level(before, keyHz(60)), 1e-3);
    EXPECT_LT(level(after, keyHz(60)), 0.03 * level(before, keyHz(60)));
    EXPECT_NEAR(level(after, keyHz(28)) / level(before, keyHz(28)), 1.0, 0.05);
}

TEST(EngineRate, PitchFollowsTheRate) {
    for (const double rate : {22050.0, 48000.0, 96000.0, 192000.0}) {
        SCOPED_TRACE(rate);
        for (const Waveform waveform : {Waveform::kFeedback, Waveform::kTable}) {
            Rig rig;
            rig.engine().setSampleRate(rate);
            EXPECT_EQ(rig.engine().sampleRate(), rate);
            rig.engine().setWaveform(waveform);
            rig.playOnly(engine::kViola);
            rig.noteOn(69);
            rig.renderSeconds(0.1);
            const Sound sound = rig.renderSeconds(0.3);
            const double hz = engine_test::partialHz(sound.left, 440.0, rate);
            EXPECT_NEAR(hz, 440.0, 0.25);  // a cent
        }
    }
}

TEST(EngineRate, EveryUsableRateSoundsAndStaysFiniteAtTheExtremes) {
    for (const double rate : {1000.0, 3000.0, 8000.0, 22050.0, 44100.0, 192000.0, 768000.0}) {
        for (const Waveform waveform :
             {Waveform::kFeedback, Waveform::kTable, Waveform::kSquaredFeedback}) {
            for (const float highPass : {0.0f, 1.0f}) {
                SCOPED_TRACE(testing::Message()
                             << rate << ' ' << static_cast<int>(waveform) << ' ' << highPass);
                Rig rig(rate);
                rig.useEffects();
                engine::Engine& e = rig.engine();
                for (int s = 0; s < engine::kNumSections; ++s) {
                    e.setSectionSwitch(static_cast<engine::Section>(s), 1.0f);
                    e.setSectionLevel(static_cast<engine::Section>(s), 1.0f);
                }
                e.setWaveform(waveform);
                e.setVolume(1.0f);
                e.setBrightness(1.0f);
                e.setViolinPhase(0.5f);
                for (int i = 0; i < 30; ++i) e.setHighPass(highPass);
                e.setPolyphony(44);
                e.setPitchOffset(1.0f);
                rig.send(0xE0, 0, 127);
                for (int key = 12; key < 56; key += 2) rig.noteOn(key);
                for (int key = 84; key <= 115; key += 3) rig.noteOn(key);
                for (int i = 0; i < 4; ++i) {
                    const Sound sound = rig.render(512);
                    EXPECT_TRUE(isFinite(sound));
                    // A fault would have silenced the block.
                    EXPECT_FALSE(isZero(sound));
                    const auto loudest = std::max_element(
                        sound.left.begin(), sound.left.end(),
                        [](float a, float b) { return std::fabs(a) < std::fabs(b); });
                    EXPECT_LT(std::fabs(*loudest), 64.0f);
                }
            }
        }
    }
}

TEST(EngineRate, UnusableRatesAreRefused) {
    Rig rig;
    Rig plain;
    for (Rig* each : {&rig, &plain}) {
        each->playOnly(engine::kViola);
        each->noteOn(60);
        each->render(1000);
    }
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double rate : {0.0, -44100.0, 999.0, 768001.0, infinity, -infinity,
                              std::numeric_limits<double>::quiet_NaN()}) {
        rig.engine().setSampleRate(rate);
        EXPECT_EQ(rig.engine().sampleRate(), engine_test::kRate);
        EXPECT_EQ(Rig(rate).engine().sampleRate(), engine_test::kRate);
    }
    EXPECT_TRUE(sameBits(rig.render(1000), plain.render(1000)));
}

}  // namespace
