// The built modules of both formats: one song gives the same bits.
#include <gtest/gtest.h>

#include <memory>

#include "tests/plugin/vst2/plugin_under_test.h"
#include "tests/plugin/vst3/driver.h"

namespace {

constexpr int kFrames = 4 * 48000;
constexpr double kRate = 48000.0;

// A MIDI message, or a parameter at a block's beginning: status 0, index, value in percent.
struct Step {
    int frame;
    int status;
    int data1;
    int data2;
};

constexpr Step kSong[] = {
    {0, 0xC0, 17, 0},         {0, 0x90, 36, 100},     {0, 0x90, 60, 1},
    {1, 0x90, 64, 127},       {63, 0xB0, 64, 127},    {64, 0x90, 67, 90},
    {65, 0xE0, 0, 0x50},      {5000, 0, 5, 80},       {5001, 0x80, 60, 0},
    {5003, 0xE0, 0x7F, 0x7F}, {9000, 0xB0, 11, 40},   {9001, 0xE0, 0, 0x40},
    {20000, 0, 4, 65},        {20000, 0x90, 72, 64},  {24000, 0xB0, 64, 0},
    {24000, 0xA0, 72, 9},     {30000, 0, 23, 70},     {40000, 0xC0, 72, 0},
    {40000, 0x90, 55, 110},   {40010, 0xD0, 50, 0},   {41000, 0, 6, 50},
    {41000, 0x90, 57, 110},   {70000, 0xB0, 121, 0},  {80000, 0xB0, 123, 0},
    {120000, 0xC0, 40, 0},    {120000, 0x90, 48, 99}, {140000, 0x90, 51, 99},
    {150000, 0xB0, 120, 0},   {150100, 0x90, 90, 30},
};

// Blocks of several sizes; they end where a parameter is set.
std::vector<int> blocks() {
    constexpr int kSizes[] = {64, 1, 333, 1024, 17, 4096};
    std::vector<int> all;
    for (int frame = 0, i = 0; frame < kFrames; frame += all.back(), ++i) {
        int size = std::min(kSizes[i % 6], kFrames - frame);
        for (const Step& step : kSong) {
            if (step.status == 0 && step.frame > frame) size = std::min(size, step.frame - frame);
        }
        all.push_back(size);
    }
    return all;
}

driver::Sound throughVst2() {
    const TestHost host;
    const PluginLibrary library;
    PluginInstance plugin(library.entry());
    plugin.dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(kRate));
    plugin.dispatch(effMainsChanged, 0, 1);
    driver::Sound sound{std::vector<float>(kFrames), std::vector<float>(kFrames)};
    int start = 0;
    for (const int size : blocks()) {
        VstMidiEvent midi[std::size(kSong)] = {};
        struct {
            VstInt32 count = 0;
            VstIntPtr reserved = 0;
            VstMidiEvent* events[std::size(kSong)];
        } list;
        for (const Step& step : kSong) {
            if (step.frame < start || step.frame >= start + size) continue;
            if (step.status == 0) {
                plugin->setParameter(plugin.record(), step.data1, step.data2 * 0.01f);
                continue;
            }
            VstMidiEvent& event = midi[list.count];
            event.type = kVstMidiType;
            event.deltaFrames = step.frame - start;
            event.midiData[0] = static_cast<char>(step.status);
            event.midiData[1] = static_cast<char>(step.data1);
            event.midiData[2] = static_cast<char>(step.data2);
            list.events[list.count++] = &event;
        }
        plugin.dispatch(effProcessEvents, 0, 0, &list);
        float* outputs[] = {&sound.left[start], &sound.right[start]};
        plugin->processReplacing(plugin.record(), nullptr, outputs, size);
        start += size;
    }
    return sound;
}

// As a host hands the same song on: notes as events, all else as points of parameters.
void put(driver::Instance& instance, const Step& step, int offset) {
    using namespace driver;
    const double value = step.data2 / 127.0;
    switch (step.status) {
        case 0:
            return instance.changes.add(static_cast<ParamID>(step.data1), offset,
                                        step.data2 * 0.01f);
        case 0xB0:
            return instance.changes.add(kFirstControllerId + step.data1, offset, value);
        case 0xC0:
            return instance.changes.add(kProgramId, offset, step.data1 / 127.0);
        case 0xD0:
            return instance.changes.add(kFirstControllerId + kAfterTouch, offset,
                                        step.data1 / 127.0);
        case 0xE0:
            return instance.changes.add(kFirstControllerId + kPitchBend, offset,
                                        (step.data1 + step.data2 * 128) / 16383.0);
        case 0xA0: {
            Event event{};
            event.sampleOffset = offset;
            event.type = Event::kPolyPressureEvent;
            event.polyPressure = {0, static_cast<int16>(step.data1), static_cast<float>(value), -1};
            return instance.events.list.push_back(event);
        }
        default:
            return instance.events.note(step.status == 0x90, step.data1, step.data2, offset);
    }
}

driver::Sound throughVst3() {
    const platform::SharedLibrary library(QUARZEL_VST3);
    using Entry = vst3::IPluginFactory* (*)();
    const driver::Ref<vst3::IPluginFactory> factory(
        reinterpret_cast<Entry>(library.symbol("GetPluginFactory"))());
    driver::Instance instance(factory.get());
    instance.start(kRate, 4096);
    driver::Sound sound;
    int start = 0;
    for (const int size : blocks()) {
        for (const Step& step : kSong) {
            if (step.frame >= start && step.frame < start + size)
                put(instance, step, step.frame - start);
        }
        const driver::Sound block = instance.render(size);
        sound.left.insert(sound.left.end(), block.left.begin(), block.left.end());
        sound.right.insert(sound.right.end(), block.right.begin(), block.right.end());
        start += size;
    }
    return sound;
}

TEST(Song, GivesTheSameBitsThroughBothFormats) {
    const driver::Sound expected = throughVst2();
    const driver::Sound sound = throughVst3();
    EXPECT_GT(expected.peak(), 0.05f);
    for (int i = 0; i < kFrames; ++i) {
        ASSERT_EQ(sound.left[i], expected.left[i]) << i;
        ASSERT_EQ(sound.right[i], expected.right[i]) << i;
    }
}

}  // namespace
