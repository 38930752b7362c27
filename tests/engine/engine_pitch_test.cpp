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

// Plays the key and checks its fundamental: the expected partial is there and in tune, and nothing
// sounds an octave below.
void expectPitch(Rig& rig, int key, double expectedHz) {
    SCOPED_TRACE(testing::Message() << "key " << key << ", " << expectedHz << " Hz");
    const double rate = rig.engine().sampleRate();
    rig.noteOn(key);
    rig.renderSeconds(0.1);
    const Sound sound = rig.renderSeconds(expectedHz < 60.0 ? 0.9 : 0.45);
    rig.noteOff(key);
    rig.renderSeconds(0.1);

    const std::size_t window = sound.left.size();
    const double level = std::abs(partial(sound.left, 0, window, expectedHz, rate));
    EXPECT_GT(level, 1e-5);
    EXPECT_LT(std::abs(partial(sound.left, 0, window, expectedHz * 0.5, rate)), level * 0.15);
    const double hz = engine_test::partialHz(sound.left, expectedHz, rate);
    EXPECT_NEAR(1200.0 * std::log2(hz / expectedHz), 0.0, 1.0) << "cents";
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
        for (const double rate : {22050.0, 96000.0, 192000.0}) {
            rig.engine().setSampleRate(rate);
            expectPitch(rig, 69, 440.0);
        }
    }
}

TEST(EnginePitch, BendAndMasterPitchReachOneSemitone) {
    const struct {
        int bend;  // -1: none
        float offset;
        double semitones;
    } rows[] = {{0, 0.0f, -1.0},   {127, 0.0f, 1.0}, {64, 0.0f, 0.00787}, {-1, 1.0f, 1.0},
                {-1, -1.0f, -1.0}, {127, 0.5f, 1.5}, {0, -1.0f, -2.0}};
    for (const Waveform waveform : {Waveform::kFeedback, Waveform::kTable}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(testing::Message() << row.bend << " with " << row.offset);
            Rig rig;
            rig.engine().setWaveform(waveform);
            rig.playOnly(engine::kViola);
            rig.engine().setPitchBend(30);  // cancelled by the next call
            rig.engine().setPitchOffset(row.offset);
            if (row.bend >= 0) rig.engine().setPitchBend(row.bend);
            expectPitch(rig, 60, keyHz(60) * std::exp2(row.semitones / 12.0));
        }
    }
}

}  // namespace
