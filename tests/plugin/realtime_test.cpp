// What may run on the audio thread allocates nothing, waits for nothing and asks nothing of the
// system, whatever another thread is doing with the same instance.
#include <atomic>
#include <cerrno>
#include <cmath>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <locale.h>
#include <poll.h>
#include <pthread.h>
#include <semaphore.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "dsp/shelf_tone.h"
#include "dsp/stereo_phaser.h"
#include "gui/headless.h"
#include "plugin/vst_synth.h"
#include "tests/plugin/call_watch.h"
#include "tests/plugin/installed_skin.h"
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

volatile int noFile = -1;
volatile std::size_t fewBytes = 24;
const char* volatile noText = "";
void* volatile heapBlock = nullptr;  // or the compiler does without the heap

void waitForASignal() {
    std::mutex mutex;
    std::condition_variable condition;
    std::atomic<bool> woken{false};
    std::thread waker([&] {
        while (!woken) condition.notify_all();
    });
    std::unique_lock<std::mutex> lock(mutex);
    condition.wait(lock);
    woken = true;
    waker.join();
}

// An action for each watched function, which calls at least that one.
const std::map<std::string, std::function<void()>> kActions = {
    {"malloc", [] { delete new std::vector<char>(fewBytes); }},
    {"calloc", [] { std::free(heapBlock = std::calloc(3, fewBytes)); }},
    {"realloc",
     [] {
         heapBlock = std::malloc(fewBytes);
         std::free(heapBlock = std::realloc(heapBlock, 2 * fewBytes));
     }},
    {"aligned_alloc", [] { std::free(heapBlock = std::aligned_alloc(64, 64)); }},
    {"free", [] { std::free(heapBlock = std::malloc(fewBytes)); }},
    {"posix_memalign",
     [] {
         void* block = nullptr;
         if (posix_memalign(&block, 64, fewBytes) == 0) std::free(block);
     }},
    {"mmap", [] { mmap(nullptr, 0, PROT_READ, MAP_PRIVATE, noFile, 0); }},
    {"munmap", [] { munmap(nullptr, 0); }},
    {"pthread_mutex_trylock",
     [] {
         std::mutex mutex;
         if (mutex.try_lock()) mutex.unlock();
     }},
    {"pthread_mutex_timedlock",
     [] {
         pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
         const timespec past = {};
         pthread_mutex_timedlock(&mutex, &past);
     }},
    {"pthread_rwlock_rdlock",
     [] {
         pthread_rwlock_t lock = PTHREAD_RWLOCK_INITIALIZER;
         pthread_rwlock_rdlock(&lock);
     }},
    {"pthread_rwlock_wrlock",
     [] {
         pthread_rwlock_t lock = PTHREAD_RWLOCK_INITIALIZER;
         pthread_rwlock_wrlock(&lock);
     }},
    {"pthread_spin_lock",
     [] {
         pthread_spinlock_t lock;
         pthread_spin_init(&lock, PTHREAD_PROCESS_PRIVATE);
         pthread_spin_lock(&lock);
     }},
    {"pthread_cond_wait", waitForASignal},
    {"pthread_cond_timedwait",
     [] {
         pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
         pthread_cond_t condition = PTHREAD_COND_INITIALIZER;
         const timespec past = {};
         pthread_mutex_lock(&mutex);
         pthread_cond_timedwait(&condition, &mutex, &past);
     }},
    {"pthread_cond_clockwait",
     [] {
         std::mutex mutex;
         std::condition_variable condition;
         std::unique_lock<std::mutex> lock(mutex);
         condition.wait_for(lock, std::chrono::microseconds(1));
     }},
    {"pthread_cond_signal", [] { std::condition_variable().notify_one(); }},
    {"pthread_cond_broadcast", [] { std::condition_variable().notify_all(); }},
    {"sem_wait",
     [] {
         sem_t semaphore;
         sem_init(&semaphore, 0, 1);
         sem_wait(&semaphore);
     }},
    {"sem_timedwait",
     [] {
         sem_t semaphore;
         sem_init(&semaphore, 0, 0);
         const timespec past = {};
         sem_timedwait(&semaphore, &past);
     }},
    {"sem_post",
     [] {
         sem_t semaphore;
         sem_init(&semaphore, 0, 0);
         sem_post(&semaphore);
     }},
    {"pthread_create", [] { std::thread([] {}).join(); }},
    {"pthread_join", [] { std::thread([] {}).join(); }},
    {"nanosleep",
     [] {
         const timespec time = {0, 1};
         nanosleep(&time, nullptr);
     }},
    {"clock_nanosleep",
     [] {
         const timespec time = {0, 1};
         clock_nanosleep(CLOCK_MONOTONIC, 0, &time, nullptr);
     }},
    {"usleep", [] { usleep(1); }},
    {"sleep", [] { sleep(0); }},
    {"sched_yield", [] { std::this_thread::yield(); }},
    {"poll", [] { poll(nullptr, 0, 0); }},
    {"select",
     [] {
         timeval time = {};
         select(0, nullptr, nullptr, nullptr, &time);
     }},
    {"open", [] { close(open("/dev/null", O_RDONLY)); }},
    {"open64", [] { close(open64("/dev/null", O_RDONLY)); }},
    {"openat", [] { close(openat(AT_FDCWD, "/dev/null", O_RDONLY)); }},
    {"fopen", [] { std::fclose(std::fopen("/dev/null", "r")); }},
    {"fopen64", [] { std::fclose(fopen64("/dev/null", "r")); }},
    {"fclose", [] { std::fclose(std::fopen("/dev/null", "r")); }},
    {"fflush", [] { std::fflush(stdout); }},
    {"read",
     [] {
         char byte;
         EXPECT_EQ(read(noFile, &byte, 1), -1);
     }},
    {"write", [] { EXPECT_EQ(write(noFile, "", 1), -1); }},
    {"writev", [] { EXPECT_EQ(writev(noFile, nullptr, 0), -1); }},
    {"lseek", [] { lseek(noFile, 0, SEEK_SET); }},
    {"close", [] { close(noFile); }},
    {"stat",
     [] {
         struct stat answer;
         stat("/", &answer);
     }},
    {"lstat",
     [] {
         struct stat answer;
         lstat("/", &answer);
     }},
    {"fstat",
     [] {
         struct stat answer;
         fstat(0, &answer);
     }},
    {"access", [] { EXPECT_EQ(access("/", F_OK), 0); }},
    {"rename", [] { EXPECT_NE(std::rename("", ""), 0); }},
    {"unlink", [] { unlink(""); }},
    {"mkdir", [] { mkdir("", 0); }},
    {"rmdir", [] { rmdir(""); }},
    {"fsync", [] { fsync(noFile); }},
    {"opendir", [] { EXPECT_EQ(opendir(""), nullptr); }},
    {"ioctl", [] { ioctl(noFile, 0, 0); }},
    {"fcntl", [] { fcntl(noFile, F_GETFD); }},
    {"connect", [] { connect(noFile, nullptr, 0); }},
    {"syscall", [] { syscall(SYS_getppid); }},
    {"printf", [] { std::printf("%.*s", noFile + 1, "unseen"); }},
    {"fprintf", [] { std::fprintf(stderr, "%.0s", "unseen"); }},
    {"snprintf",
     [] {
         char text[8];
         std::snprintf(text, sizeof text, "%d", noFile);
     }},
    {"vfprintf", [] { std::fprintf(stderr, "%.0s", "unseen"); }},
    {"puts", [] { std::puts("the watch sees this line"); }},
    {"fputs", [] { std::fputs(noText, stdout); }},
    {"fwrite", [] { EXPECT_EQ(std::fwrite("", 1, 0, stdout), 0u); }},
    {"strtod", [] { EXPECT_EQ(std::strtod("1", nullptr), 1.0); }},
    {"dlopen", [] { dlclose(dlopen(nullptr, RTLD_LAZY)); }},
    {"dlclose", [] { dlclose(dlopen(nullptr, RTLD_LAZY)); }},
    {"getenv", [] { EXPECT_EQ(std::getenv("QUARZEL_UNSET"), nullptr); }},
    {"setlocale", [] { setlocale(LC_ALL, nullptr); }},
    {"newlocale", [] { freelocale(newlocale(LC_ALL_MASK, "C", nullptr)); }},
    {"uselocale", [] { uselocale(nullptr); }},
    {"rand", [] { EXPECT_GE(std::rand(), 0); }},
    {"system", [] { EXPECT_NE(std::system(nullptr), 0); }},
    {"__cxa_throw",
     [] {
         try {
             throw std::runtime_error("");
         } catch (const std::runtime_error&) {
         }
     }},
};

TEST(CallWatch, SeesEveryCallThatItNames) {
    for (const std::string& name : watch::names()) {
        const auto action = kActions.find(name);
        ASSERT_NE(action, kActions.end()) << "nothing tries " << name;
        const std::string seen = ", " + callsOf(action->second);
        EXPECT_NE(seen.find(", " + name + ' '), std::string::npos) << name << " in " << seen;
    }
}

TEST(CallWatch, SeesLocksAndHowTheyWereHad) {
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
    const watch::Locks locks = watch::locks();
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

// Everything that a host's audio thread may ask, through the instance's record.
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
    // One message in its own block.
    void play(int status, int data1, int data2, VstInt32 type = kVstMidiType, VstInt32 size = 32) {
        ++events_;
        VstMidiEvent midi = {};
        midi.type = type;
        midi.byteSize = size;
        midi.deltaFrames = events_ % 40;
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
            synth_->learnSlot().arm(cc % 17 == 0 ? cc / 17 : state::LearnSlot::kNone);
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

    // What went through the watch, for whoever reads the log.
    void report() const {
        const watch::Locks locks = watch::locks();
        std::printf(
            "watched %ld calls with %d events; %ld locks, %ld awaited, longest %.0f ns; "
            "%ld host calls\n",
            calls_, events_, locks.taken, locks.awaited, locks.longestNanoseconds,
            hostCalls.load());
    }

    static constexpr int kLongest = 16384;
    std::unique_ptr<plugin::VstSynth> synth_ = std::make_unique<plugin::VstSynth>(hostAnswer);
    AEffect* record_ = synth_->getAeffect();
    std::vector<float> left_ = std::vector<float>(kLongest);
    std::vector<float> right_ = std::vector<float>(kLongest);
    long calls_ = 0;
    int events_ = 0;
};

// What the audio thread may lock: the hand-overs of the tone's steps and of the phaser's sweep,
// each with the table that belongs to it.
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
        dsp::StereoFloat frame = {};
        phaser.render(&frame, 1);
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

// Between its blocks a host that does nothing else finds the tone's step alone, 90 times a second.
TEST_F(AudioThread, TakesOneLockNowAndThenWhileItOnlyRenders) {
    play(0x90, 60, 100);
    watch::reset();
    for (int i = 0; i < 441; ++i) render(100);
    EXPECT_EQ(watch::locks().mutexes, 1);
    EXPECT_EQ(watch::locks().taken, 90);
    EXPECT_EQ(watch::calls(), "");
}

TEST_F(AudioThread, WaitsForNobodyWhileTheUserInterfaceIsBusy) {
    const RecordedMessages messages;
    const InstalledSkin skin;
    const VSTGUI::headless::Scope scope;
    std::atomic<bool> finished{false};
    std::atomic<int> rounds{0};
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
    EXPECT_EQ(watch::locks().awaited, 0);
    EXPECT_EQ(watch::calls(), "");
    report();
    std::printf("%d rounds of the user interface\n", rounds.load());
}

}  // namespace
