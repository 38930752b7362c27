// Every block under hostile settings and input: settings that are no numbers change nothing, wild
// ones leave the output bounded, and clear() ends what a hostile input began.
#include <cmath>
#include <memory>

#include <gtest/gtest.h>

#include "dsp/dc_blocker.h"
#include "dsp/fractional_delay.h"
#include "dsp/limiter.h"
#include "dsp/module_fm_op.h"
#include "dsp/one_pole.h"
#include "dsp/output_filter.h"
#include "dsp/pitched_oscillator.h"
#include "dsp/reverb_model.h"
#include "dsp/shelf_tone.h"
#include "dsp/smoother.h"
#include "dsp/square_lfo.h"
#include "dsp/state_variable_filter.h"
#include "dsp/stereo_phaser.h"
#include "dsp/voice_envelope.h"
#include "tests/dsp/measure.h"

namespace dsp {
namespace {

constexpr float kWild[] = {-1e30f, -1.0f, -1e-40f, 0.0f, 1e-40f, 1.0f, 1e30f};

// set(block, value) uses every setter; tick(block, x) returns one sample, within the bound for any
// setting and an input within 1. The constructor's arguments make a block with sane settings.
template <typename Block, typename Set, typename Tick, typename... Arguments>
void expectUnharmed(float bound, Set set, Tick tick, Arguments... arguments) {
    const auto expectAlike = [&](Block& block, Block& fresh) {
        for (int i = 0; i < 1000; ++i) {
            const float x = i % 20 < 10 ? 0.5f : -0.5f;
            ASSERT_EQ(tick(block, x), tick(fresh, x)) << i;
        }
    };
    for (const float bad : kHostile) {
        SCOPED_TRACE(bad);
        const auto block = std::make_unique<Block>(arguments...);
        const auto fresh = std::make_unique<Block>(arguments...);
        set(*block, bad);
        expectAlike(*block, *fresh);
        for (int i = 0; i < 10; ++i) {
            tick(*block, bad);
            tick(*fresh, 0.5f);
        }
        block->clear();
        fresh->clear();
        expectAlike(*block, *fresh);
    }
    for (const float wild : kWild) {
        SCOPED_TRACE(wild);
        const auto block = std::make_unique<Block>(arguments...);
        set(*block, wild);
        for (int i = 0; i < 3000; ++i) {
            ASSERT_LT(std::fabs(tick(*block, i % 2 ? 1.0f : -1.0f)), bound);
        }
    }
}

template <typename Block>
void setNoRate(Block& block) {
    for (const double rate : {double{NAN}, double{INFINITY}, 0.0, -1.0}) block.setRate(rate);
}

const auto tickOf = [](auto& block, float x) { return static_cast<float>(block.tick(x)); };

TEST(Hostile, Filters) {
    expectUnharmed<OnePole>(
        100.0f,
        [](OnePole& filter, float v) {
            filter.setRate(v);
            setNoRate(filter);
            filter.setFrequency(v);
            filter.setCoefficient(v);
        },
        tickOf);
    expectUnharmed<StateVariableFilter>(
        100.0f,
        [](StateVariableFilter& filter, float v) {
            filter.setRate(v);
            setNoRate(filter);
            filter.setCutoff(v);
            filter.setCoefficient(v);
            filter.setResonance(v);
            if (!std::isfinite(v)) filter.setShape(v, v);
        },
        [](StateVariableFilter& filter, float x) { return filter.process(x); });
    expectUnharmed<Smoother>(
        4.0f,
        [](Smoother& smoother, float v) {
            if (v < 0.0f || !std::isfinite(v)) smoother.setTime(v);
        },
        [](Smoother& smoother, float x) { return smoother.highPass(x); });
    expectUnharmed<DcBlocker>(
        4.0f, [](DcBlocker& blocker, float) { setNoRate(blocker); }, tickOf);
    expectUnharmed<OutputFilter>(
        100.0f,
        [](OutputFilter& filter, float v) {
            if (!std::isfinite(v)) filter.setHighPass(v, 44100.0);
            for (const double rate : {double{NAN}, double{INFINITY}, 0.0, -1.0}) {
                filter.setHighPass(1.0f, rate);
                filter.setRate(rate, 1.0f);
            }
        },
        tickOf);
    expectUnharmed<ShelfTone>(
        100.0f,
        [](ShelfTone& shelf, float v) {
            shelf.setControl(std::isfinite(v) ? v : 0.5f);
            shelf.setControl(v);
            for (const float rate : {v, 7999.0f, 384001.0f}) shelf.setSampleRate(rate);
        },
        [](ShelfTone& shelf, float x) {
            float out[2];
            shelf.process(x, out);
            return out[0];
        });
}

TEST(Hostile, Oscillators) {
    const auto setOperator = [](ModuleFMop& op, float v) {
        if (!std::isfinite(v)) op.setFrequency(440.0f);
        op.setRate(v);
        setNoRate(op);
        op.setFrequency(v);
        op.setFrequency(-1.0f);
        if (!std::isfinite(v)) {
            EXPECT_EQ(op.frequency(), 440.0f);
            op.setFrequency(0.0f);
        }
    };
    expectUnharmed<ModuleFMop>(1000.0f, setOperator,
                               [](auto& op, float x) { return op.process(x); });
    expectUnharmed<ModuleFMop>(1000.0f, setOperator,
                               [](auto& op, float x) { return op.processSquared(x); });
    expectUnharmed<SquareLfo>(
        1.01f,
        [](SquareLfo& lfo, float v) {
            setNoRate(lfo);
            lfo.setFrequency(std::isfinite(v) ? v : NAN);
        },
        [](SquareLfo& lfo, float) { return lfo.tick(); });
    expectUnharmed<PitchedOscillator>(
        2.3f, [](auto& oscillator, float) { setNoRate(oscillator); }, tickOf);
    for (const double rate : {8000.0, 44100.0, 768000.0}) {
        for (const double bend : {-1.0, 0.0, 1.0, 1e9}) {
            for (const int note : {0, 69, 127}) {
                PitchedOscillator oscillator;
                oscillator.setRate(rate);
                oscillator.setNote(note);
                for (int i = 0; i < 2000; ++i) ASSERT_LT(std::fabs(oscillator.tick(bend)), 2.3f);
            }
        }
    }
}

TEST(Hostile, Effects) {
    expectUnharmed<FractionalDelay>(
        2.0f,
        [](FractionalDelay& line, float v) {
            for (const float delay : {v, -1.0f, 5.1f}) line.setDelay(delay);
        },
        tickOf, 2.5f, 4);
    expectUnharmed<StereoPhaser>(
        10.0f,
        [](StereoPhaser& phaser, float v) {
            for (const float bad : {v, -0.01f, 1.01f}) {
                if (bad >= 0.0f && bad <= 1.0f) continue;
                EXPECT_FALSE(phaser.setStages(bad));
                EXPECT_FALSE(phaser.setDepth(bad));
                EXPECT_FALSE(phaser.setRate(bad));
                EXPECT_FALSE(phaser.setFeedback(bad));
            }
            for (const float rate : {v, 7999.0f, 384001.0f}) {
                EXPECT_FALSE(phaser.setSampleRate(rate, false));
            }
            EXPECT_FALSE(phaser.setFeedback(0.91f));
        },
        [](StereoPhaser& phaser, float x) {
            float left, right;
            phaser.process(x, 0.0f, &left, &right);
            return left;
        });
    const auto tickReverb = [](ReverbModel& model, float x) {
        float left = x, right = x;
        process(model, left, right);
        return left;
    };
    expectUnharmed<ReverbModel>(
        10.0f,
        [](ReverbModel& model, float v) {
            model.setRoomSize(v);
            model.setDamp(v);
            model.setWidth(v);
            model.setLengths(false, v);
            if (!std::isfinite(v)) {
                model.setWet(v);
                model.setDry(v);
                model.setMode(v);
            }
            model.update();
        },
        tickReverb);
    const auto model = std::make_unique<ReverbModel>();
    for (int i = 0; i < 5000; ++i) ASSERT_EQ(tickReverb(*model, 1e-40f), 0.0f);
    for (const float bad : kHostile) {
        PeakLimiter limiter;
        PeakLimiter::Run run;
        float left[kMostLanes] = {0.25f, bad, 0.25f}, right[kMostLanes] = {0.25f, 0.0f, 0.25f};
        limiter.begin(run, {1.0f, 1.0f, 3, nullptr}, left, right, 3);
        for (int t = 0; t < 3; ++t) run.levels[t] = run.follower.tick(run.levels[t]);
        limiter.finish(run, left, right, 3, 0.0, left, right);
        EXPECT_EQ(left[2], 1.0f);
        EXPECT_TRUE(std::isfinite(limiter.follower()));
    }
}

TEST(Hostile, VoiceEnvelope) {
    for (const float bad : {kHostile[0], kHostile[1], kHostile[2]}) {
        SCOPED_TRACE(bad);
        VoiceEnvelope envelope;
        envelope.setRate(bad);
        envelope.setRate(0.0);
        envelope.setAttackTime(bad);
        envelope.setDecayTime(bad);
        envelope.setSustain(bad);
        envelope.setReleaseFactor(bad);
        envelope.setVelocityAmount(bad);
        envelope.setPeakScale(bad);
        envelope.setLevelKeyTrack(bad);
        envelope.setTimeKeyTrack(bad);
        envelope.setKeyRange(60, 60);
        envelope.setGlideHz(bad);
        envelope.trigger(bad, 60);
        for (int i = 0; i < 200; ++i) ASSERT_TRUE(std::isfinite(envelope.tick()));
        EXPECT_EQ(envelope.stage(), VoiceEnvelope::kSustain);
    }
}

}  // namespace
}  // namespace dsp
