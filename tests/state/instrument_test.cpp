// Bank and engine together: what reaches the sound when, and from which thread.
#include "state/instrument.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engine/engine.h"

namespace {

using state::Instrument;

// Runs something before the first frame of a block.
class AtStart : public engine::EventSource {
  public:
    explicit AtStart(std::function<void()> action = [] {}) : action_(std::move(action)) {}
    int dispatchUpTo(int frame) override {
        if (frame == 1) action_();
        return kNothingDue;
    }

  private:
    std::function<void()> action_;
};

struct Sound {
    std::vector<float> left;
    std::vector<float> right;
    bool operator==(const Sound& o) const { return left == o.left && right == o.right; }
};

Sound render(
    Instrument& instrument, int frames, std::function<void()> action = [] {}) {
    Sound sound{std::vector<float>(frames), std::vector<float>(frames)};
    AtStart events(std::move(action));
    EXPECT_TRUE(instrument.render(sound.left.data(), sound.right.data(), frames, events));
    return sound;
}

std::unique_ptr<Instrument> playing() {
    auto instrument = std::make_unique<Instrument>(44100.0);
    instrument->setProgram(0);
    render(*instrument, 4000, [&] { instrument->engine().noteOn(64, 100); });
    return instrument;
}

void onAnotherThread(std::function<void()> action) {
    std::thread(std::move(action)).join();
}

TEST(Instrument, SoundsTheSameWhicheverThreadChangesIt) {
    const auto near = playing();
    near->setValue(state::kBrigthness, 0.2f);
    near->setValue(state::kViolin, 1.0f);
    near->setValue(state::kHP, 0.9f);
    const auto far = playing();
    onAnotherThread([&] {
        far->setValue(state::kBrigthness, 0.2f);
        far->setValue(state::kViolin, 1.0f);
        far->setValue(state::kHP, 0.9f);
        EXPECT_EQ(far->value(state::kViolin), 1.0f);
    });
    EXPECT_TRUE(render(*near, 2000) == render(*far, 2000));
}

TEST(Instrument, LeavesChangesOfOtherThreadsToTheRenderer) {
    const auto instrument = playing();
    onAnotherThread([&] {
        instrument->setValue(state::kVoiceCountParam, 0.0f);
        instrument->setSampleRate(96000.0);
    });
    EXPECT_EQ(instrument->engine().polyphony(), engine::kInitialVoices);
    EXPECT_EQ(instrument->engine().sampleRate(), 44100.0);
    render(*instrument, 1);
    EXPECT_EQ(instrument->engine().polyphony(), engine::kMinVoices);
    EXPECT_EQ(instrument->engine().sampleRate(), 96000.0);
}

TEST(Instrument, TakesChangesAtOnceWhileNobodyRenders) {
    const auto instrument = playing();
    instrument->stopRendering();
    onAnotherThread([&] { instrument->setSampleRate(48000.0); });
    EXPECT_EQ(instrument->engine().sampleRate(), 48000.0);
}

TEST(Instrument, CarriesOutWhatIsPendingWhenRenderingStops) {
    const auto instrument = playing();
    onAnotherThread([&] { instrument->setSampleRate(48000.0); });
    instrument->stopRendering();
    EXPECT_EQ(instrument->engine().sampleRate(), 48000.0);
}

TEST(Instrument, ProgramOfAnotherThreadSilencesNoOtherBlock) {
    const auto instrument = playing();
    onAnotherThread([&] {
        EXPECT_TRUE(instrument->setProgram(5));
        EXPECT_EQ(instrument->program(), 5);
    });
    EXPECT_EQ(instrument->program(), 5);
    const Sound sound = render(*instrument, 4000, [&] { instrument->engine().noteOn(64, 100); });
    EXPECT_GT(*std::max_element(sound.left.begin(), sound.left.end()), 0.01f);
}

// Does something in the middle of a program that is being sent.
class Interrupted : public engine::Engine {
  public:
    using Engine::Engine;
    void setVolume(float gain) override { volume = gain; }
    void setBrightness(float control) override {
        Engine::setBrightness(control);
        if (const auto action = std::exchange(interruption, nullptr)) action();
    }
    std::function<void()> interruption;
    float volume = -1.0f;
};

TEST(Instrument, SendsWhatAChunkHasReplacedMeanwhile) {
    auto engine = std::make_unique<Interrupted>(44100.0);
    Interrupted& sent = *engine;
    const auto instrument = std::make_unique<Instrument>(std::move(engine));
    sent.interruption = [&] {
        EXPECT_FALSE(instrument->setProgram(5));
        instrument->bank().setValue(3, state::kVolume, 0.75f);
        onAnotherThread([&] { instrument->resendProgram(); });
    };
    EXPECT_TRUE(instrument->setProgram(3));
    EXPECT_EQ(sent.interruption, nullptr);
    EXPECT_EQ(instrument->program(), 3);
    EXPECT_EQ(sent.volume, 0.75f);
}

// "HP" and "Brigthness" walk on purpose.
TEST(Instrument, SoundsAProgramTheSameWhateverCameBeforeIt) {
    constexpr float kSprings[] = {0.9f, 0.2f, 0.6f, 0.3f, 0.75f, 0.0f};
    constexpr int kPrograms = 4 * static_cast<int>(std::size(kSprings));
    state::Bank bank;
    std::mt19937 random(1);
    for (int program = 0; program < kPrograms; ++program) {
        for (int index = 0; index < state::kNumParams; ++index) {
            if (index == state::kHP || index == state::kBrigthness) continue;
            bank.setValue(program, index, static_cast<float>(random() % 101) * 0.01f);
        }
        bank.setValue(program, state::kReverb, 1.0f);
        bank.setValue(program, state::kAmnt, program % 2 == 0 ? 0.5f : 0.95f);
        bank.setValue(program, state::kSpring, kSprings[program % std::size(kSprings)]);
    }
    const auto sound = [&](int before, int program) {
        const auto instrument = std::make_unique<Instrument>(44100.0);
        instrument->bank() = bank;
        instrument->setProgram(before);
        instrument->setProgram(program);
        return render(*instrument, 6000, [&] {
            for (const int key : {36, 64, 71}) instrument->engine().noteOn(key, 100);
        });
    };
    for (int program = 1; program < kPrograms; ++program) {
        SCOPED_TRACE(program);
        EXPECT_TRUE(sound(program - 1, program) == sound(program, program));
    }
}

TEST(Instrument, RefusesProgramsOutOfRange) {
    const auto instrument = playing();
    EXPECT_FALSE(instrument->setProgram(-1));
    EXPECT_FALSE(instrument->setProgram(128));
    EXPECT_EQ(instrument->program(), 0);
}

TEST(Instrument, ReadsOneIndexPastTheTable) {
    const auto instrument = playing();
    EXPECT_EQ(instrument->value(42), instrument->bank().valuePastTable(0));
    EXPECT_EQ(instrument->value(43), 0.0f);
    EXPECT_EQ(instrument->value(-1), 0.0f);
}

TEST(Instrument, MovesTheHighPassOnceForEachSetting) {
    const auto moved = [](int times, bool elsewhere) {
        const auto instrument = playing();
        const auto move = [&] {
            for (int i = 0; i < times; ++i) instrument->setValue(state::kHP, 1.0f);
        };
        elsewhere ? onAnotherThread(move) : move();
        return render(*instrument, 1000);
    };
    EXPECT_TRUE(moved(3, true) == moved(3, false));
    EXPECT_FALSE(moved(3, true) == moved(1, false));
}

}  // namespace
