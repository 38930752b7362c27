// A host that renders on one thread and changes everything from others. Also run under the thread
// sanitizer.
#include <atomic>
#include <chrono>
#include <cmath>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "engine/engine.h"
#include "tests/plugin/vst2/own_instance.h"

namespace {

#ifdef __SANITIZE_THREAD__
constexpr int kPairs = 1000;
#else
constexpr int kPairs = 10000;
#endif

class Threads : public testing::Test {
  protected:
    // Renders blocks while `change` runs repeatedly on another thread. Calls check for each block.
    template <typename Change, typename Check>
    void renderAgainst(int blocks, Change change, Check check) {
        std::atomic<bool> finished{false};
        std::atomic<int> changes{0};
        std::thread other([&] {
            while (!finished) {
                change();
                ++changes;
                std::this_thread::yield();
            }
        });
        // A slow change may need more blocks.
        for (int i = 0; i < blocks || changes < 3; ++i) {
            render();
            check();
        }
        finished = true;
        other.join();
    }

    void render() { level_ = synth_.peak(); }
    void play(int status, int data1, int data2) {
        EventList list({0}, status, data1, data2);
        synth_.send(list);
        render();
    }
    void noteOn(int key) { play(0x90, key, 100); }

    OwnInstance synth_;
    float level_ = 0.0f;  // the last block's peak
};

TEST_F(Threads, ParametersCostNoBlock) {
    synth_.set(state::kEnvAttack, 0.0f);
    noteOn(60);
    for (int i = 0; i < 20; ++i) render();
    std::mt19937 random(1);
    // All parameters that cannot silence the note.
    const int indices[] = {state::kBrigthness, state::kViola, state::kViolin, state::kDepth_1,
                           state::kEnvDecay,   state::kRate,  state::kAmnt,   state::kMix,
                           state::kSize,       state::kWidth, state::kKSplit, state::kEnvRelease};
    renderAgainst(
        2000,
        [&] {
            const float value = 0.2f + 0.7f * static_cast<float>(random() % 1000) / 1000.0f;
            synth_.set(indices[random() % std::size(indices)], value);
        },
        [&] { ASSERT_GT(level_, 1e-4f); });
}

// Also while controllers set, on the audio thread, what the host reads, copies and saves.
TEST_F(Threads, ProgramsChunksRatesAndMainsMayCrossBlocks) {
    std::mt19937 random(3);
    const auto any = [&](int count) { return static_cast<int>(random() % count); };
    void* own = nullptr;
    synth_.dispatch(effGetChunk, 0, 0, &own);
    const auto bank = std::make_unique<state::BankChunk>(*static_cast<state::BankChunk*>(own));
    int block = 0;
    renderAgainst(
        1000,
        [&] {
            void* chunk = nullptr;
            char name[] = "moved";
            switch (any(9)) {
                case 0:
                    synth_.rate(any(2) ? 44100.0f : 48000.0f);
                    synth_.dispatch(effSetBlockSize, 0, 64 << any(4));
                    break;
                case 1:
                    synth_.set(state::kVoiceCountParam, any(2) ? 0.1f : 1.0f);
                    break;
                case 2:
                    synth_.dispatch(effSetChunk, 0, sizeof *bank, bank.get());
                    break;
                case 3:
                    EXPECT_EQ(synth_.dispatch(effGetChunk, 1, 0, &chunk), 192);
                    synth_.dispatch(effSetChunk, 1, 192, bank->programs);
                    break;
                case 4:
                    synth_.dispatch(effSetProgramName, 0, 0, name);
                    synth_.dispatch(effCopyProgram, any(128));
                    break;
                case 5:
                    synth_.mains(false), synth_.mains(true);
                    break;
                case 6:
                    synth_.synth()->instrument().learnSlot().arm(any(state::kNumParams));
                    state::controllerMap().bind(any(state::kNumParams), any(2) ? 20 : -1);
                    state::controllerMap().saveIfChanged();
                    break;
                default:
                    synth_.dispatch(effSetProgram, 0, any(128));
                    synth_.set(state::kWidth, 0.25f);
            }
        },
        [&] {
            synth_.text(effGetProgramName);
            synth_.text(effGetParamDisplay, state::kPan);
            synth_.value(state::kNumParams);
            ASSERT_TRUE(std::isfinite(level_));
            play(0xB0, 20, ++block % 128);
            if (block % 16 == 0) play(0xC0, block % 128, 0);
            noteOn(48 + block % 24);
        });
    state::controllerMap().clear();
    synth_.dispatch(effSetProgram, 0, 1);
    synth_.set(state::kPan, 0.25f);
    EXPECT_EQ(synth_.value(state::kPan), 0.25f);
    EXPECT_TRUE(synth_.sounds());
}

// Remembers the last volume.
class HeardEngine : public engine::Engine {
  public:
    using Engine::Engine;
    void setVolume(float gain) override { volume.store(gain, std::memory_order_relaxed); }
    std::atomic<float> volume{0.0f};
};

// A host that restores a session sends a chunk or a program, and immediately the program meant.
TEST(ThreadsOfOneInstance, TheLastOfTwoProgramsIsTheOneThatPlays) {
    using Clock = std::chrono::steady_clock;
    auto owned = std::make_unique<HeardEngine>(44100.0);
    HeardEngine& engine = *owned;
    OwnInstance synth(std::make_unique<vst2::VstSynth>(nullptr, std::move(owned)));
    const auto bank = std::make_unique<state::BankChunk>();
    bank->parameters[state::kVolume].programHeld = 1;
    for (int i = 0; i < state::kNumPrograms; ++i) {
        bank->programs[i].values[state::kVolume] = static_cast<float>(i) / 128.0f;
    }
    synth.dispatch(effSetChunk, 0, sizeof *bank, bank.get());

    std::atomic<bool> finished{false};
    std::atomic<int> blocks{0};
    std::thread audio([&] {
        for (; !finished; ++blocks) {
            synth.block();
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
    });
    std::mt19937 random(5);
    for (int pair = 0; pair < kPairs; ++pair) {
        const int last = static_cast<int>(random() % 128);
        if (pair % 2) {
            synth.dispatch(effSetChunk, 0, sizeof *bank, bank.get());
        } else {
            synth.dispatch(effSetProgram, 0, random() % 128);
        }
        const auto next = Clock::now() + std::chrono::microseconds(random() % 100);
        while (Clock::now() < next) continue;
        synth.dispatch(effSetProgram, 0, last);
        EXPECT_EQ(synth.dispatch(effGetProgram), last);
        if (pair % 10 != 0) continue;
        for (const int from = blocks; blocks - from < 2;) std::this_thread::yield();
        EXPECT_EQ(engine.volume, synth.value(state::kVolume)) << pair;
    }
    finished = true;
    audio.join();
}

// Instances share the controller map, its file, the tables and the missing-bank flag.
TEST(ThreadsOfManyInstances, ShareTheProcess) {
    std::vector<std::thread> hosts;
    std::atomic<int> heard{0};
    for (int host = 0; host < 8; ++host) {
        hosts.emplace_back([&heard, host] {
            const int index = state::kVlphs + host;  // cannot silence the note
            for (int life = 0; life < 4; ++life) {
                OwnInstance synth;
                synth.set(state::kEnvAttack, 0.0f);
                synth.rate(life % 2 ? 48000.0f : 96000.0f);
                synth.play(0x90, 48 + host, 100);
                float sum = 0.0f;
                for (int i = 0; i < 30; ++i) {
                    synth.synth()->instrument().learnSlot().arm(index);
                    state::controllerMap().bind(index, i);
                    sum += std::fabs(synth.play(0xB0, i, i)[i]);
                }
                heard += sum > 1e-3f && std::isfinite(sum);
            }
        });
    }
    for (std::thread& host : hosts) host.join();
    EXPECT_EQ(heard, 32);
    state::controllerMap().clear();
}

}  // namespace
