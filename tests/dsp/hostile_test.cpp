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
constexpr double kNoRates[] = {double{kHostile[0]}, double{kHostile[1]}, 0.0, -1.0};

// make() gives a block with sane settings; set(block, value) uses every setter; tick(block, x)
// returns one sample of output.
template <typename Make, typename Set, typename Tick>
void expectUnharmed(Make make, Set set, Tick tick, float bound) {
    const auto expectAlike = [&](auto& block, auto& fresh) {
        for (int i = 0; i < 1000; ++i) {
            const float x = i % 20 < 10 ? 0.5f : -0.5f;
            ASSERT_EQ(tick(*block, x), tick(*fresh, x)) << i;
        }
    };
    for (const float bad : kHostile) {
        SCOPED_TRACE(bad);
        auto block = make();
        auto fresh = make();
        set(*block, bad);
        expectAlike(block, fresh);
        for (int i = 0; i < 10; ++i) {
            tick(*block, bad);
            tick(*fresh, 0.5f);
        }
        block->clear();
        fresh->clear();
        expectAlike(block, fresh);
    }
    for (const float wild : kWild) {
        SCOPED_TRACE(wild);
        auto block = make();
        set(*block, wild);
        for (int i = 0; i < 3000; ++i)
            ASSERT_LT(std::fabs(tick(*block, i % 2 ? 1.0f : -1.0f)), bound);
    }
}

template <typename Block>
std::unique_ptr<Block> plain() {
    return std::make_unique<Block>();
}

TEST(Hostile, OnePole) {
    const auto set = [](OnePole& filter, float v) {
        filter.setRate(v);
        filter.setRate(0.0f);
        filter.setFrequency(v);
        filter.setCoefficient(v);
    };
    expectUnharmed(
        plain<OnePole>, set, [](OnePole& filter, float x) { return filter.tick(x); }, 100.0f);
}

TEST(Hostile, StateVariableFilter) {
    const auto set = [](StateVariableFilter& filter, float v) {
        filter.setRate(v);
        filter.setRate(0.0f);
        filter.setCutoff(v);
        filter.setCoefficient(v);
        filter.setResonance(v);
        if (!std::isfinite(v)) filter.setShape(v, v);
    };
    const auto tick = [](StateVariableFilter& filter, float x) { return filter.process(x); };
    expectUnharmed(plain<StateVariableFilter>, set, tick, 100.0f);
}

TEST(Hostile, SmootherAndDcBlocker) {
    expectUnharmed(
        plain<Smoother>,
        [](Smoother& smoother, float v) {
            smoother.setTime(-1.0f);
            if (!(v >= 0.0f && std::isfinite(v))) smoother.setTime(v);
        },
        [](Smoother& smoother, float x) { return smoother.highPass(x); }, 4.0f);
    const auto set = [](DcBlocker& blocker, float) {
        for (const double rate : kNoRates) blocker.setRate(rate);
    };
    expectUnharmed(
        plain<DcBlocker>, set, [](DcBlocker& blocker, float x) { return blocker.tick(x); }, 4.0f);
}

TEST(Hostile, OutputFilter) {
    const auto set = [](OutputFilter& filter, float v) {
        for (const double rate : kNoRates) {
            filter.setHighPass(1.0f, rate);
            filter.setRate(rate, 1.0f);
        }
        if (!std::isfinite(v)) filter.setHighPass(v, 44100.0);
        if (!std::isfinite(v)) filter.setRate(44100.0, v);
    };
    const auto tick = [](OutputFilter& filter, float x) {
        return static_cast<float>(filter.tick(x));
    };
    expectUnharmed(plain<OutputFilter>, set, tick, 100.0f);
}

TEST(Hostile, ModuleFMop) {
    const auto make = [] {
        auto op = std::make_unique<ModuleFMop>();
        op->setFrequency(440.0f);
        return op;
    };
    const auto set = [](ModuleFMop& op, float v) {
        op.setRate(v);
        op.setRate(0.0f);
        op.setFrequency(v);
        op.setFrequency(-1.0f);
    };
    expectUnharmed(
        make, set, [](ModuleFMop& op, float x) { return op.process(x); }, 200.0f);
    expectUnharmed(
        make, set, [](ModuleFMop& op, float x) { return op.processSquared(x); }, 200.0f);
}

TEST(Hostile, PitchedOscillator) {
    const auto set = [](PitchedOscillator& oscillator, float) {
        for (const double rate : kNoRates) oscillator.setRate(rate);
    };
    const auto tick = [](PitchedOscillator& oscillator, float bend) {
        return oscillator.tick(bend);
    };
    expectUnharmed(plain<PitchedOscillator>, set, tick, 2.3f);
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

TEST(Hostile, SquareLfo) {
    const auto set = [](SquareLfo& lfo, float v) {
        for (const double rate : kNoRates) lfo.setRate(rate);
        if (!(v > 0.0f)) lfo.setFrequency(v);
        if (v == 1e30f) lfo.setFrequency(v);
    };
    const auto tick = [](SquareLfo& lfo, float) { return lfo.tick(); };
    expectUnharmed(plain<SquareLfo>, set, tick, 1.01f);
}

TEST(Hostile, ShelfTone) {
    const auto make = [] {
        auto shelf = std::make_unique<ShelfTone>();
        shelf->setControl(0.75f);
        shelf->setSampleRate(44100.0f);
        return shelf;
    };
    const auto set = [](ShelfTone& shelf, float v) {
        shelf.setControl(v);
        shelf.setSampleRate(v);
    };
    const auto tick = [](ShelfTone& shelf, float x) {
        float out[2];
        shelf.process(x, out);
        return out[0];
    };
    expectUnharmed(make, set, tick, 100.0f);
}

TEST(Hostile, StereoPhaser) {
    const auto set = [](StereoPhaser& phaser, float v) {
        for (const float bad : {v == 1.0f ? 1.01f : v, -0.01f, 1.01f}) {
            if (bad >= 0.0f && bad <= 1.0f) continue;
            EXPECT_FALSE(phaser.setStages(bad));
            EXPECT_FALSE(phaser.setDepth(bad));
            EXPECT_FALSE(phaser.setRate(bad));
            EXPECT_FALSE(phaser.setFeedback(bad));
            EXPECT_FALSE(phaser.setSampleRate(bad, false));
        }
        for (const float rate : {7999.0f, 384001.0f})
            EXPECT_FALSE(phaser.setSampleRate(rate, false));
        EXPECT_FALSE(phaser.setFeedback(0.91f));
    };
    const auto tick = [](StereoPhaser& phaser, float x) {
        float left, right;
        phaser.process(x, 0.0f, &left, &right);
        return left;
    };
    expectUnharmed(plain<StereoPhaser>, set, tick, 10.0f);
}

TEST(Hostile, FractionalDelay) {
    const auto make = [] { return std::make_unique<FractionalDelay>(2.5f, 4); };
    const auto set = [](FractionalDelay& line, float v) {
        line.setDelay(v);
        line.setDelay(-1.0f);
        line.setDelay(5.1f);
    };
    expectUnharmed(
        make, set, [](FractionalDelay& line, float x) { return line.tick(x); }, 2.0f);
}

TEST(Hostile, PeakLimiter) {
    const auto tick = [](PeakLimiter& limiter, float x) {
        float left = x, right = 0.25f;
        limiter.process(left, right);
        return right;
    };
    expectUnharmed(
        plain<PeakLimiter>, [](PeakLimiter&, float) {}, tick, 2.0f);
    for (const float bad : kHostile) {
        PeakLimiter limiter;
        tick(limiter, bad);
        EXPECT_EQ(tick(limiter, 0.25f), 1.0f);  // without a clear
    }
}

TEST(Hostile, ReverbModel) {
    const auto set = [](ReverbModel& model, float v) {
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
    };
    const auto tick = [](ReverbModel& model, float x) {
        float left = x, right = x;
        model.render(&left, &right, 1);
        return left;
    };
    expectUnharmed(plain<ReverbModel>, set, tick, 10.0f);
    const auto model = plain<ReverbModel>();
    for (int i = 0; i < 5000; ++i) ASSERT_EQ(tick(*model, 1e-40f), 0.0f);
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
