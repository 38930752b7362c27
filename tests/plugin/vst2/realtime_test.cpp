// Code on the audio thread does not allocate, wait or make system calls, whatever another thread
// does with the same instance.
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <random>
#include <stdexcept>
#include <thread>

#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "dsp/shelf_tone.h"
#include "dsp/stereo_phaser.h"
#include "gui/headless.h"
#include "tests/plugin/editor_kit.h"
#include "tests/plugin/vst2/call_watch.h"
#include "tests/plugin/vst2/own_instance.h"
#include "tests/support/recorded_messages.h"

namespace {

template <typename Action>
std::string callsOf(Action action) {
    watch::reset();
    {
        const watch::Watch watched;
        action();
    }
    return watch::calls();
}

TEST(CallWatch, SeesWhatTheLibrariesCall) {
    const bool seesAll = watch::seesSystemCalls();
    const auto systemCall = [](int number) { return "system call " + std::to_string(number); };
    const std::pair<std::string, std::function<void()>> actions[] = {
        {"malloc", [] { std::string(100, ' ').swap(*std::make_unique<std::string>()); }},
        {"free", [] { delete new std::vector<char>(100); }},
        {"pthread_cond_broadcast", [] { std::condition_variable().notify_all(); }},
        {"getenv", [] { EXPECT_EQ(std::getenv("QUARZEL_UNSET"), nullptr); }},
        {"rand", [] { EXPECT_GE(std::rand(), 0); }},
        {"__cxa_throw", [] { EXPECT_THROW(std::string().at(1), std::out_of_range); }},
        {systemCall(SYS_clock_nanosleep),
         [] { std::this_thread::sleep_for(std::chrono::nanoseconds(1)); }},
        {systemCall(SYS_sched_yield), [] { std::this_thread::yield(); }},
        {systemCall(SYS_mkdir), [] { std::filesystem::create_directory("/"); }},
        {systemCall(SYS_openat), [] { std::ifstream("/dev/null").get(); }},
        {systemCall(SYS_write), [] { std::fputs("the watch sees this line\n", stderr); }},
        {systemCall(SYS_getppid), [] {
             long parent = 0;  // without any function
             asm volatile("syscall" : "=a"(parent) : "a"(SYS_getppid) : "rcx", "r11", "memory");
             EXPECT_EQ(parent, getppid());
         }}};
    for (const auto& [name, action] : actions) {
        const std::string seen = ", " + callsOf(action);
        if (!seesAll && name.front() == 's') continue;
        EXPECT_NE(seen.find(", " + name + ' '), std::string::npos) << name << " in " << seen;
    }
    EXPECT_EQ(callsOf([] {}), "");
    if (!seesAll) GTEST_SKIP() << "the kernel does not tell of system calls";
}

TEST(CallWatch, SeesLocksAndHowTheyWereHad) {
    std::mutex free;
    std::recursive_mutex held;
    std::atomic<bool> isHeld{false};
    std::thread holder([&] {
        const std::lock_guard<std::recursive_mutex> lock(held);
        isHeld = true;
        while (watch::locks().taken < 3) std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    });
    while (!isHeld) std::this_thread::yield();
    callsOf([&] {
        for (int i = 0; i < 3; ++i) const std::lock_guard<std::mutex> lock(free);
        const std::lock_guard<std::recursive_mutex> lock(held);
    });
    holder.join();
    EXPECT_EQ(watch::locks().taken, 4);
    EXPECT_EQ(watch::locks().awaited, 1);
    EXPECT_EQ(watch::locks().mutexes, 2);
}

VstIntPtr hostAnswer(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
    return opcode == audioMasterVersion ? kVstVersion : 0;
}

// All calls of a host's audio thread, through the instance's record.
class AudioThread : public testing::Test {
  protected:
    AudioThread() {
        for (int cc = 0; cc < state::kNumParams; ++cc) {
            state::controllerMap().bind(cc, cc % 3 == 0 ? cc : state::ControllerMap::kUnbound);
        }
        watch::reset();
    }
    ~AudioThread() override { state::controllerMap().clear(); }

    void render(int frames) {
        float* outputs[] = {left_.data(), right_.data()};
        double* doubles[] = {nullptr, nullptr};
        const watch::Watch watched;
        plugin_->processReplacing(plugin_.record(), nullptr, outputs, frames);
        plugin_->process(plugin_.record(), nullptr, outputs, frames);
        plugin_->processDoubleReplacing(plugin_.record(), nullptr, doubles, frames);
    }
    // Plays one message before an entry that is missing.
    void play(int status, int data1, int data2, VstInt32 type = kVstMidiType, VstInt32 size = 32) {
        EventList list({data1 % 32, 0}, status, data1, data2);
        list[0].type = type;
        list[0].byteSize = size;
        list.loseEntry(1);
        {
            const watch::Watch watched;
            plugin_.send(list);
        }
        render(32);
    }

    // Every message and parameter in turn, between other calls at random. The locks of the tone
    // steps and of the phaser's sweep, each with its table, are free at any time.
    void doEverything() {
        constexpr float kInfinity = std::numeric_limits<float>::infinity();
        constexpr float kValues[] = {NAN, kInfinity, -3.0f, 2.0f, 0.0f, 1.0f, 0.2f, 0.5f, 0.9f};
        constexpr float kRates[] = {0.0f,      8000.5f,   22050.0f, 44100.0f,   96000.0f,
                                    192000.0f, 767999.5f, -1.0f,    float{NAN}, 48000.0f};
        constexpr VstInt32 kSizes[] = {0, -1, 1, INT32_MIN, INT32_MAX, 17, 1024, -5};
        std::mt19937 random(1);
        const auto any = [&random] { return static_cast<int>(random() % 256); };
        for (int i = 0; i < 128 * 16; ++i) {
            if (i % 17 == 0) learnSlot().arm(i % state::kNumParams);
            play(0xB0 | i % 16, i / 16, any());
            play(i & 0xFF, any(), any());
            const watch::Watch watched;
            plugin_.set(i % (state::kNumParams + 2) - 1, kValues[random() % 9]);
            plugin_.value(i % (state::kNumParams + 2) - 1);
            if (i % 8 == 0) plugin_.dispatch(effSetProgram, 0, i / 8 % 131 - 1);
            if (i % 32 == 0) plugin_.rate(kRates[i / 32 % 10]);
            if (i % 32 == 8) plugin_.dispatch(effSetBlockSize, 0, kSizes[i / 32 % 8]);
            if (i % 32 == 16) plugin_.mains(i / 32 % 2);
        }
        for (const VstInt32 size : kSizes) {
            for (const VstInt32 type : {0, 2, int{kVstSysExType}, -1, INT32_MAX}) {
                play(0xF0, 0x7E, 0xF7, type, size);
            }
            if (size < kLongest) render(size);
        }
        plugin_.mains(true);
        render(kLongest);
        EXPECT_EQ(watch::locks().awaited, 0);
        EXPECT_EQ(watch::calls(), "");
    }
    state::LearnSlot& learnSlot() { return plugin_.synth()->instrument().learnSlot(); }

    static constexpr int kLongest = 16384;
    OwnInstance plugin_{hostAnswer};
    std::vector<float> left_ = std::vector<float>(kLongest);
    std::vector<float> right_ = std::vector<float>(kLongest);
};

// The mutexes that the audio thread may lock.
int mutexesOfTheHandOvers() {
    dsp::ShelfTone tone;
    dsp::StereoPhaser phaser;
    float pair[2];
    callsOf([&] {
        tone.setSampleRate(48000.0f);
        tone.setControl(1.0f);
        for (int i = 0; i < 48000; ++i) tone.process(0.0f, pair);
        phaser.setSampleRate(48000.0f, false);
        phaser.setStages(1.0f);
        phaser.setRate(0.7f);
        phaser.process(0.0f, 0.0f, &pair[0], &pair[1]);
    });
    return watch::locks().mutexes;
}

// If a host only renders, only the tone step takes a lock, 90 times a second.
TEST_F(AudioThread, LocksTheTwoHandOversOnly) {
    const int handOvers = mutexesOfTheHandOvers();
    watch::reset();
    play(0x90, 60, 100);
    watch::reset();
    for (int i = 0; i < 441; ++i) render(100);
    EXPECT_EQ(watch::locks().mutexes, 1);
    EXPECT_EQ(watch::locks().taken, 90);
    doEverything();
    EXPECT_EQ(watch::locks().mutexes, handOvers);
}

TEST_F(AudioThread, WaitsForNobodyWhileTheUserInterfaceIsBusy) {
    const int handOvers = mutexesOfTheHandOvers();
    const RecordedMessages messages;
    const InstalledSkin skin;
    const VSTGUI::headless::Scope scope;
    std::atomic<bool> finished{false};
    std::atomic<int> rounds{0};
    watch::reset();
    render(64);
    std::thread userInterface([&] {
        std::mt19937 random(1);
        const auto state = std::make_unique<state::BankChunk>();
        const auto ask = [&](VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr) {
            plugin_.dispatch(opcode, index, value, ptr, 96000.0f);
        };
        for (; !finished; ++rounds) {
            void* chunk = nullptr;
            ask(effEditOpen, 0, 0, &chunk);
            for (int i = 0; i < 200; ++i) {
                const int index = static_cast<int>(random() % state::kNumParams);
                plugin_.set(index, static_cast<float>(random() % 100) / 99.0f);
            }
            ask(effEditIdle, 0, 0, nullptr);
            ask(effGetChunk, rounds % 2, 0, &chunk);
            ask(effSetChunk, rounds % 2, rounds % 2 ? 192 : sizeof *state, state.get());
            ask(effSetChunk, 0, 7, state.get());
            ask(effSetProgram, 0, random() % 128, nullptr);
            ask(effSetSampleRate, 0, 0, nullptr);
            ask(effCopyProgram, static_cast<VstInt32>(random() % 128), 0, nullptr);
            state::controllerMap().bind(static_cast<int>(random() % 42), rounds % 128);
            if (rounds % 3 == 0) ask(effEditClose, 0, 0, nullptr);
        }
        ask(effEditClose, 0, 0, nullptr);
    });
    for (int pass = 0; pass < 3 || rounds < 200; ++pass) doEverything();
    finished = true;
    userInterface.join();
    EXPECT_EQ(watch::locks().mutexes, handOvers);
}

}  // namespace
