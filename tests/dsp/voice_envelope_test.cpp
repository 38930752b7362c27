// Tests of the voice envelope.
#include "dsp/voice_envelope.h"

#include <gtest/gtest.h>

namespace dsp {
namespace {

// Steps of a quarter, a sustain of one half, a release that halves.
VoiceEnvelope coarseEnvelope() {
    VoiceEnvelope envelope;
    envelope.setRate(1024.0);
    envelope.setAttackTime(4.0f / 1024.0f);
    envelope.setDecayTime(4.0f / 1024.0f);
    envelope.setSustain(0.5f);
    envelope.setReleaseFactor(0.5f);
    return envelope;
}

void run(VoiceEnvelope& envelope, int samples) {
    for (int i = 0; i < samples; ++i) envelope.tick();
}

TEST(VoiceEnvelope, BeginsAt44100Hz) {
    VoiceEnvelope envelope;
    envelope.setAttackTime(4.0f / 44100.0f);
    envelope.trigger(1.0f, 60);
    EXPECT_NEAR(envelope.tick(), 0.25f, 1e-6f);
}

TEST(VoiceEnvelope, EndedReleaseKeepsItsLastLevel) {
    VoiceEnvelope envelope = coarseEnvelope();
    envelope.trigger(1.0f, 60);
    run(envelope, 6);
    envelope.noteOff();
    run(envelope, 8);
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kRelease);
    const float last = 0.5f / 512.0f;
    EXPECT_EQ(envelope.tick(), last);
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kIdle);
    EXPECT_EQ(envelope.tick(), last);

    // A release from there drops to zero at once. From zero it goes straight to idle.
    envelope.noteOff();
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kRelease);
    EXPECT_EQ(envelope.tick(), 0.0f);
    envelope.noteOff();
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kIdle);
}

TEST(VoiceEnvelope, AttacksFromItsLevelOrAfterAQuickFade) {
    VoiceEnvelope envelope = coarseEnvelope();
    envelope.trigger(1.0f, 60);
    run(envelope, 6);
    envelope.noteOff();
    envelope.tick();
    envelope.trigger(1.0f, 60);
    EXPECT_FLOAT_EQ(envelope.tick(), 0.5f);
    envelope.quickFade();
    run(envelope, 49);
    EXPECT_NEAR(envelope.level(), 0.01f, 1e-6f);
    EXPECT_EQ(envelope.tick(), 0.0f);
    EXPECT_FLOAT_EQ(envelope.tick(), 0.25f);
}

TEST(VoiceEnvelope, HeldReleaseWaitsForTheSustain) {
    VoiceEnvelope envelope = coarseEnvelope();
    envelope.setHoldToSustain(true);
    envelope.trigger(1.0f, 60);
    envelope.tick();
    envelope.noteOff();
    run(envelope, 4);
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kDecay);
    envelope.tick();
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kRelease);
    envelope.trigger(1.0f, 60);
    run(envelope, 10);
    envelope.noteOff();  // already in the sustain
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kRelease);

    envelope.setSustainForever(true);
    envelope.trigger(1.0f, 60);
    run(envelope, 10);
    envelope.noteOff();
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kSustain);
}

TEST(VoiceEnvelope, LoopsOnASustainOfExactlyZero) {
    VoiceEnvelope envelope = coarseEnvelope();
    envelope.setSustain(0.0005f);  // stored as 0
    envelope.setLoopOnZeroSustain(true);
    envelope.trigger(1.0f, 60);
    run(envelope, 8);
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kAttack);
    run(envelope, 8);
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kAttack);
    EXPECT_EQ(envelope.level(), 0.0f);

    envelope.setSustain(0.0005f);  // stored as given
    envelope.trigger(1.0f, 60);
    run(envelope, 8);
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kSustain);
    EXPECT_EQ(envelope.level(), 0.0005f);
}

TEST(VoiceEnvelope, KeyTrackingScalesPeakAndTimes) {
    const struct {
        float amount;
        int note;
        float scale;
        int low = 0, high = 127;
    } rows[] = {{0.5f, 0, 1.0f},          {0.5f, 127, 0.25f}, {-0.5f, 127, 1.0f},
                {-0.5f, 0, 0.25f},        {1.0f, 127, 0.0f},  {0.5f, 36, 1.0f, 36, 60},
                {0.5f, 60, 0.25f, 36, 60}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.amount << " at key " << row.note);
        VoiceEnvelope level;
        level.setAttackTime(0.0f);
        level.setLevelKeyTrack(row.amount);
        level.setKeyRange(row.low, row.high);
        level.trigger(1.0f, row.note);
        EXPECT_FLOAT_EQ(level.tick(), row.scale);

        VoiceEnvelope time = coarseEnvelope();
        time.setTimeKeyTrack(row.amount);
        time.setKeyRange(row.low, row.high);
        time.trigger(1.0f, row.note);
        EXPECT_FLOAT_EQ(time.tick(), row.scale == 1.0f ? 0.25f : 1.0f);
    }
}

TEST(VoiceEnvelope, GlideSmoothsTheSustainAndHoldsTheRelease) {
    VoiceEnvelope envelope = coarseEnvelope();
    envelope.setGlide(true);
    envelope.trigger(1.0f, 60);
    run(envelope, 6);
    EXPECT_NEAR(envelope.tick(), 0.5f * 6.28319f / 44100.0f * 20.0f, 1e-8f);
    run(envelope, 10000);
    EXPECT_NEAR(envelope.tick(), 0.5f, 1e-4f);
    envelope.noteOff();
    run(envelope, 100);
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kRelease);
    EXPECT_EQ(envelope.level(), 0.0f);
    envelope.kill();
    EXPECT_EQ(envelope.stage(), VoiceEnvelope::kIdle);
}

}  // namespace
}  // namespace dsp
