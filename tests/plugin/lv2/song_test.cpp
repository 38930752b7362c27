// The built modules of LV2 and VST 2: one song gives the same bits.
#include <gtest/gtest.h>

#include "tests/plugin/lv2/through_lv2.h"
#include "tests/plugin/vst2/plugin_under_test.h"

namespace {

constexpr int kFrames = 3 * 48000;
constexpr double kRate = 48000.0;

struct Step {
    int frame;
    int status;
    int data1;
    int data2;
};

constexpr Step kSong[] = {
    {0, 0xC0, 17, 0},       {0, 0x90, 36, 100},    {0, 0x90, 60, 1},       {1, 0x90, 64, 127},
    {63, 0xB0, 64, 127},    {65, 0xE0, 0, 0x50},   {5000, 0, 5, 80},       {5001, 0x80, 60, 0},
    {9000, 0xB0, 11, 40},   {20000, 0, 4, 65},     {20000, 0x90, 72, 64},  {24000, 0xB0, 64, 0},
    {30000, 0, 23, 70},     {40000, 0xC0, 72, 0},  {40010, 0xD0, 50, 0},   {41000, 0, 6, 50},
    {41000, 0x90, 57, 110}, {70000, 0xB0, 121, 0}, {70001, 0, 0, 20},      {80000, 0xB0, 123, 0},
    {90000, 0xC0, 40, 0},   {90000, 0x90, 48, 99}, {120000, 0xB0, 120, 0}, {120100, 0x90, 90, 30},
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

lv2_driver::Sound throughVst2() {
    const TestHost host;
    const PluginLibrary library;
    PluginInstance plugin(library.entry());
    plugin.dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(kRate));
    plugin.dispatch(effMainsChanged, 0, 1);
    lv2_driver::Sound sound{std::vector<float>(kFrames), std::vector<float>(kFrames)};
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

TEST(SongThroughLv2, GivesTheBitsOfVst2) {
    const lv2_driver::Sound expected = throughVst2();
    const lv2_driver::Sound sound = throughLv2(kSong, blocks(), kRate);
    EXPECT_GT(expected.peak(), 0.05f);
    for (int i = 0; i < kFrames; ++i) {
        ASSERT_EQ(sound.left[i], expected.left[i]) << i;
        ASSERT_EQ(sound.right[i], expected.right[i]) << i;
    }
}

}  // namespace
