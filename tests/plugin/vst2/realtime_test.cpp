// Code on the audio thread does not allocate, wait or make system calls, whatever another thread
// does with the same instance.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "dsp/shelf_tone.h"
#include "dsp/stereo_phaser.h"
#include "gui/headless.h"
#include "plugin/vst2/vst_synth.h"
#include "tests/plugin/vst2/call_watch.h"
#include "tests/plugin/vst2/installed_skin.h"
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

// The base address of the program or library that contains a function.
void* homeOf(void* function) {
    Dl_info info = {};
    return dladdr(function, &info) ? info.dli_fbase : nullptr;
}

TEST(CallWatch, StandsInFrontOfEveryFunctionThatItNames) {
    void* const program = homeOf(reinterpret_cast<void*>(&homeOf));
    EXPECT_GT(watch::names().size(), 70u);
    for (const std::string& name : watch::names()) {
        EXPECT_EQ(homeOf(dlsym(RTLD_DEFAULT, name.c_str())), program) << name;
    }
}

#if defined(_FORTIFY_SOURCE) && _FORTIFY_SOURCE > 0
constexpr const char* kPrintf = "__printf_chk";
#else
constexpr const char* kPrintf = "printf";
#endif

TEST(CallWatch, SeesWhatTheLibrariesCall) {
    const std::map<std::string, std::function<void()>> actions = {
        {"malloc", [] { std::string(100, ' ').swap(*std::make_unique<std::string>()); }},
        {"free", [] { delete new std::vector<char>(100); }},
        {"pthread_create", [] { std::thread([] {}).join(); }},
        {"pthread_cond_broadcast", [] { std::condition_variable().notify_all(); }},
        {"nanosleep", [] { std::this_thread::sleep_for(std::chrono::nanoseconds(1)); }},
        {"sched_yield", [] { std::this_thread::yield(); }},
        {"open", [] { std::random_device("/dev/urandom")(); }},
        {"fopen64", [] { std::ifstream("/dev/null").get(); }},
        {"mkdir", [] { std::filesystem::create_directory("/"); }},
        {"getenv", [] { EXPECT_EQ(std::getenv("QUARZEL_UNSET"), nullptr); }},
        {"fwrite", [] { std::cout << "the watch sees this line\n"; }},
        {kPrintf, [] { std::printf("and this one: %d\n", 1 + std::rand() % 1); }},
        {"rand", [] { EXPECT_GE(std::rand(), 0); }},
        {"syscall", [] { syscall(SYS_getppid); }},
        {"__cxa_throw", [] { EXPECT_THROW(std::string().at(1), std::out_of_range); }},
    };
    for (const auto& [name, action] : actions) {
        const std::string seen = ", " + callsOf(action);
        EXPECT_NE(seen.find(", " + name + ' '), std::string::npos) << name << " in " << seen;
    }
}

TEST(CallWatch, SeesLocksAndHowTheyWereHad) {
    watch::Locks locks = {};
    // Retry if this thread was descheduled for as long as the lock was held.
    for (int tries = 0; tries < 50 && locks.longestNanoseconds <= 1e5; ++tries) {
        std::mutex free;
        std::recursive_mutex held;
        std::atomic<bool> isHeld{false};
        std::thread holder([&] {
            const std::lock_guard<std::recursive_mutex> lock(held);
            isHeld = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        });
        while (!isHeld) std::this_thread::yield();
        callsOf([&] {
            for (int i = 0; i < 3; ++i) const std::lock_guard<std::mutex> lock(free);
            const std::lock_guard<std::recursive_mutex> lock(held);
        });
        holder.join();
        locks = watch::locks();
    }
    EXPECT_EQ(locks.taken, 4);
    EXPECT_EQ(locks.awaited, 1);
    EXPECT_EQ(locks.mutexes, 2);
    EXPECT_GT(locks.longestNanoseconds, 1e5);
}

TEST(CallWatch, SeesSystemCallsThatNoFunctionMakes) {
    if (!watch::seesSystemCalls()) GTEST_SKIP() << "the kernel does not tell of system calls";
    long parent = 0;
    const std::string seen = callsOf([&] {
        asm volatile("syscall" : "=a"(parent) : "a"(SYS_getppid) : "rcx", "r11", "memory");
    });
    EXPECT_EQ(seen, "system call " + std::to_string(SYS_getppid) + " 1");
    EXPECT_EQ(parent, getppid());
    EXPECT_EQ(callsOf([] {}), "");
}

std::atomic<long> hostCalls{0};

VstIntPtr hostAnswer(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
    ++hostCalls;
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
        hostCalls = 0;
    }
    ~AudioThread() override { state::controllerMap().clear(); }

    template <typename Call>
    void watched(Call call) {
        ++calls_;
        const watch::Watch watch;
        call();
    }
    void dispatch(VstInt32 opcode, VstIntPtr value = 0, void* ptr = nullptr, float opt = 0.0f) {
        watched([&] { record_->dispatcher(record_, opcode, 0, value, ptr, opt); });
    }
    void render(int frames) {
        float* outputs[] = {left_.data(), right_.data()};
        double* doubles[] = {nullptr, nullptr};
        watched([&] { record_->processReplacing(record_, nullptr, outputs, frames); });
        watched([&] { record_->process(record_, nullptr, outputs, frames); });
        watched([&] { record_->processDoubleReplacing(record_, nullptr, doubles, frames); });
    }
    void set(VstInt32 index, float value) {
        watched([&] { record_->setParameter(record_, index, value); });
        watched([&] { record_->getParameter(record_, index); });
    }
    // Plays one message in its own block.
    void play(int status, int data1, int data2, VstInt32 type = kVstMidiType, VstInt32 size = 32) {
        ++events_;
        VstMidiEvent midi = {};
        midi.type = type;
        midi.byteSize = size;
        midi.deltaFrames = events_ % 32;
        midi.midiData[0] = static_cast<char>(status);
        midi.midiData[1] = static_cast<char>(data1);
        midi.midiData[2] = static_cast<char>(data2);
        struct {
            VstInt32 count;
            VstIntPtr reserved;
            VstEvent* events[3];
        } list = {3, 0, {reinterpret_cast<VstEvent*>(&midi), nullptr, nullptr}};
        dispatch(effProcessEvents, 0, &list);
        render(32);
    }

    void playEveryEvent() {
        for (int status = 0x00; status < 0x100; status += 0x0F) {
            for (const int data : {0, 1, 64, 127, 255}) play(status, data, 127 - data % 128);
        }
        for (int key = 0; key < 128; ++key) play(0x90, key, 1 + key % 127);
        for (int cc = 0; cc < 128; ++cc) {
            synth_->instrument().learnSlot().arm(cc % 17 == 0 ? cc / 17 : state::LearnSlot::kNone);
            for (const int value : {0, 63, 64, 127}) play(0xB0 | cc % 16, cc, value);
        }
        for (int program = 0; program < 128; ++program) play(0xC0, program, 0);
        for (const VstInt32 type : {0, 2, int{kVstSysExType}, -1, INT32_MAX}) {
            for (const VstInt32 size : {0, -1, INT32_MIN, INT32_MAX}) {
                play(0xF0, 0x7E, 0xF7, type, size);
            }
        }
    }
    // Leaves the effects on.
    void setEveryParameter() {
        constexpr float kInfinity = std::numeric_limits<float>::infinity();
        for (int index = -1; index <= state::kNumParams; ++index) {
            play(0x90, 30 + index, 100);
            for (const float value : {NAN, kInfinity, -3.0f, 2.0f, 0.0f, 1.0f, 0.2f, 0.5f, 0.9f}) {
                set(index, value);
                render(40);
            }
        }
        for (const float value : {0.0f, 0.3f, 1.0f}) {
            set(state::kVoiceCountParam, value);
            render(64);
        }
    }
    void changeProgramsAndRates() {
        for (VstIntPtr program = -1; program <= 128; ++program) {
            dispatch(effSetProgram, program);
            render(8);
        }
        for (const float rate : {0.0f, 8000.5f, 22050.0f, 44100.0f, 96000.0f, 192000.0f, 767999.5f,
                                 -1.0f, float{NAN}, 48000.0f}) {
            dispatch(effSetSampleRate, 0, nullptr, rate);
            for (const int frames : {0, 1, 17, 1024, -5}) {
                dispatch(effSetBlockSize, frames);
                play(0x90, 50, 100);
                render(frames);
            }
            dispatch(effMainsChanged, 0);
            dispatch(effMainsChanged, 1);
        }
        render(kLongest);
    }
    void doEverything() {
        setEveryParameter();
        playEveryEvent();
        changeProgramsAndRates();
    }

    // Prints the totals to the log.
    void report() const {
        const watch::Locks locks = watch::locks();
        std::printf(
            "watched %ld calls with %d events, %ld host calls; %ld locks, %ld awaited, %.0f ns on "
            "average, %.0f at most\n",
            calls_, events_, hostCalls.load(), locks.taken, locks.awaited, locks.averageNanoseconds,
            locks.longestNanoseconds);
    }

    static constexpr int kLongest = 16384;
    std::unique_ptr<vst2::VstSynth> synth_ = std::make_unique<vst2::VstSynth>(hostAnswer);
    AEffect* record_ = synth_->getAeffect();
    std::vector<float> left_ = std::vector<float>(kLongest);
    std::vector<float> right_ = std::vector<float>(kLongest);
    long calls_ = 0;
    int events_ = 0;
};

// The mutexes that the audio thread may lock: those of the tone steps and of the phaser's sweep,
// each with its table.
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

TEST_F(AudioThread, LocksTheTwoHandOversOnly) {
    const int handOvers = mutexesOfTheHandOvers();
    watch::reset();
    doEverything();
    EXPECT_EQ(watch::locks().mutexes, handOvers);
    EXPECT_EQ(watch::locks().awaited, 0);
    EXPECT_EQ(watch::calls(), "");
    report();
}

// If a host only renders, only the tone step takes a lock, 90 times a second.
TEST_F(AudioThread, TakesOneLockNowAndThenWhileItOnlyRenders) {
    play(0x90, 60, 100);
    watch::reset();
    for (int i = 0; i < 441; ++i) render(100);
    EXPECT_EQ(watch::locks().mutexes, 1);
    EXPECT_EQ(watch::locks().taken, 90);
    EXPECT_EQ(watch::calls(), "");
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
            record_->dispatcher(record_, opcode, index, value, ptr, 96000.0f);
        };
        for (; !finished; ++rounds) {
            void* chunk = nullptr;
            ask(effEditOpen, 0, 0, &chunk);
            for (int i = 0; i < 200; ++i) {
                const int index = static_cast<int>(random() % state::kNumParams);
                record_->setParameter(record_, index, static_cast<float>(random() % 100) / 99.0f);
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
    EXPECT_EQ(watch::locks().awaited, 0);
    EXPECT_EQ(watch::calls(), "");
    report();
    std::printf("%d rounds of the user interface\n", rounds.load());
}

}  // namespace
