// What may run on the audio thread allocates nothing. The whole program's heap goes through the
// counters below.
#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

#include <gtest/gtest.h>

#include "plugin/vst_synth.h"

namespace {

std::atomic<bool> counting{false};
std::atomic<int> heapCalls{0};

void note() {
    if (counting.load(std::memory_order_relaxed)) heapCalls.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace

// glibc's own entry points, so that C allocations are seen as well as C++ ones.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void __libc_free(void*);

void* malloc(std::size_t size) {
    note();
    return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    note();
    return __libc_calloc(count, size);
}
void* realloc(void* block, std::size_t size) {
    note();
    return __libc_realloc(block, size);
}
void free(void* block) {
    if (block) note();
    __libc_free(block);
}
}

namespace {

// Heap calls made by the action.
template <typename Action>
int countHeapCalls(Action action) {
    heapCalls = 0;
    counting = true;
    action();
    counting = false;
    return heapCalls;
}

class AudioThread : public testing::Test {
  protected:
    void play(int frames, std::vector<std::vector<std::uint8_t>> messages = {}) {
        for (std::size_t i = 0; i < messages.size(); ++i) {
            midi_[i] = {};
            midi_[i].type = kVstMidiType;
            for (std::size_t b = 0; b < 3; ++b) midi_[i].midiData[b] = messages[i][b];
            list_.events[i] = reinterpret_cast<VstEvent*>(&midi_[i]);
        }
        list_.count = static_cast<VstInt32>(messages.size());
        float* outputs[] = {left_.data(), right_.data()};
        calls_ += countHeapCalls([&] {
            synth_->processEvents(reinterpret_cast<VstEvents*>(&list_));
            synth_->processReplacing(nullptr, outputs, frames);
        });
    }

    struct List {
        VstInt32 count = 0;
        VstIntPtr reserved = 0;
        VstEvent* events[8] = {};
    };
    std::unique_ptr<plugin::VstSynth> synth_ = std::make_unique<plugin::VstSynth>(nullptr);
    std::vector<float> left_ = std::vector<float>(1024);
    std::vector<float> right_ = std::vector<float>(1024);
    VstMidiEvent midi_[8];
    List list_;
    int calls_ = 0;
};

TEST_F(AudioThread, CountsWhatItIsMeantToCount) {
    EXPECT_GT(countHeapCalls([] { delete new std::vector<int>(10); }), 0);
    EXPECT_GT(countHeapCalls([] { std::free(std::calloc(3, 5)); }), 0);
}

TEST_F(AudioThread, RendersEveryEventWithoutTheHeap) {
    state::controllerMap().bind(state::kSize, 70);
    play(1024, {{0x90, 60, 100}, {0x90, 40, 90}});
    play(1024, {{0xE0, 0, 100}, {0xB0, 64, 127}, {0xB0, 11, 30}, {0xB0, 70, 64}});
    play(1024, {{0xC0, 3, 0}, {0xA0, 60, 9}, {0xD0, 9, 0}, {0x80, 60, 0}});
    play(1024, {{0xB0, 123, 0}});
    for (int i = 0; i < 500; ++i) play(1024);
    EXPECT_EQ(calls_, 0);
}

TEST_F(AudioThread, ChangesParametersProgramsAndRatesWithoutTheHeap) {
    play(64, {{0x90, 60, 100}});
    calls_ += countHeapCalls([&] {
        for (int index = 0; index < state::kNumParams; ++index) {
            for (const float value : {0.0f, 0.5f, 1.0f}) synth_->setParameter(index, value);
        }
        for (const float value : {0.0f, 1.0f}) {
            synth_->setParameter(state::kVoiceCountParam, value);
        }
        for (int program = 0; program < 128; program += 40) synth_->setProgram(program);
    });
    for (const float rate : {22050.0f, 44100.0f, 192000.0f, 768000.0f, 8000.5f}) {
        calls_ += countHeapCalls([&] { synth_->setSampleRate(rate); });
        play(64, {{0x90, 65, 100}});
    }
    EXPECT_EQ(calls_, 0);
}

}  // namespace
