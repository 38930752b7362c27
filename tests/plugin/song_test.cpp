// The built modules of all formats: one song gives the same bits.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "platform/shared_library.h"
#include "state/parameter_text.h"
#include "tests/plugin/clap/driver.h"
#include "tests/plugin/vst2/plugin_under_test.h"
#include "tests/plugin/vst3/driver.h"
#ifdef QUARZEL_LV2
#include "tests/plugin/lv2/driver.h"
#endif

namespace {

using tests::Sound;

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

// Calls `put(step, offset)` for the steps of a block, then `render(frames)`. The blocks are of
// several sizes and end where a parameter is set.
template <typename Put, typename Render>
Sound play(Put put, Render render) {
    constexpr int kSizes[] = {64, 1, 333, 1024, 17, 4096};
    Sound sound;
    for (int start = 0, size = 0, i = 0; start < kFrames; start += size, ++i) {
        size = std::min(kSizes[i % 6], kFrames - start);
        for (const Step& step : kSong) {
            if (step.status == 0 && step.frame > start) size = std::min(size, step.frame - start);
        }
        for (const Step& step : kSong) {
            if (step.frame >= start && step.frame < start + size) put(step, step.frame - start);
        }
        sound.append(render(size));
    }
    return sound;
}

Sound throughVst2() {
    const TestHost host;
    const PluginLibrary library;
    PluginInstance plugin(library.entry());
    plugin.rate(static_cast<float>(kRate));
    plugin.mains(true);
    auto list = std::make_unique<EventList>();
    const auto put = [&](const Step& step, int offset) {
        if (step.status == 0) return plugin.set(step.data1, step.data2 * 0.01f);
        list->add(offset, step.status, step.data1, step.data2);
    };
    return play(put, [&](int frames) {
        plugin.send(*list);
        const std::vector<float> both = plugin.block(frames);
        list = std::make_unique<EventList>();
        return Sound{{both.begin(), both.begin() + frames}, {both.begin() + frames, both.end()}};
    });
}

// As a host hands the same song on: notes as events, all else as points of parameters.
Sound throughVst3() {
    using namespace driver;
    const platform::SharedLibrary library(QUARZEL_VST3);
    using Entry = IPluginFactory* (*)();
    const Ref<IPluginFactory> factory(
        reinterpret_cast<Entry>(library.symbol("GetPluginFactory"))());
    Instance instance(factory.get());
    instance.start(kRate, 4096);
    const auto put = [&](const Step& step, int offset) {
        const auto move = [&](ParamID id, double value) {
            instance.changes.add(id, offset, value);
        };
        switch (step.status) {
            case 0:
                return move(static_cast<ParamID>(step.data1), step.data2 * 0.01f);
            case 0xB0:
                return move(kFirstControllerId + step.data1, step.data2 / 127.0);
            case 0xC0:
                return move(kProgramId, step.data1 / 127.0);
            case 0xD0:
                return move(kFirstControllerId + kAfterTouch, step.data1 / 127.0);
            case 0xE0:
                return move(kFirstControllerId + kPitchBend,
                            (step.data1 + step.data2 * 128) / 16383.0);
            case 0xA0: {
                Event event{};
                event.sampleOffset = offset;
                event.type = Event::kPolyPressureEvent;
                event.polyPressure = {0, static_cast<int16>(step.data1),
                                      static_cast<float>(step.data2 / 127.0), -1};
                return instance.events.list.push_back(event);
            }
            default:
                return instance.events.note(step.status == 0x90, step.data1, step.data2, offset);
        }
    };
    return play(put, [&](int frames) { return instance.render(frames); });
}

// Notes in the host's own dialect, all else in that of MIDI.
Sound throughClap() {
    using namespace clap_driver;
    const platform::SharedLibrary library(QUARZEL_CLAP);
    const void* const symbol = reinterpret_cast<const void*>(library.symbol("clap_entry"));
    const auto& entry = *static_cast<const Entry*>(symbol);
    EXPECT_TRUE(entry.init(QUARZEL_CLAP));
    clap_driver::TestHost host;
    auto instance = std::make_unique<Instance>(host, entry.get_factory);
    instance->activate(kRate, 4096);
    const auto put = [&events = instance->events](const Step& step, int offset) {
        const auto time = static_cast<uint32_t>(offset);
        if (step.status == 0) {
            const double value = plainOf(step.data1, step.data2 * 0.01f);
            events.value(static_cast<Id>(step.data1), value, time);
        } else if (step.status == 0x90 || step.status == 0x80) {
            const auto type = step.status == 0x90 ? kEventNoteOn : kEventNoteOff;
            events.note(type, {-1, 0, 0, static_cast<int16_t>(step.data1)}, step.data2 / 127.0,
                        time);
        } else {
            events.midi(step.status, step.data1, step.data2, time);
        }
    };
    const Sound sound = play(put, [&](int frames) { return instance->render(frames); });
    instance.reset();
    entry.deinit();
    return sound;
}

#ifdef QUARZEL_LV2
// Parameters by their ports, all else as MIDI.
Sound throughLv2() {
    using namespace lv2_driver;
    using Descriptor = const LV2_Descriptor* (*)(std::uint32_t index);
    const platform::SharedLibrary library(QUARZEL_LV2);
    Host host;
    Instance instance(reinterpret_cast<Descriptor>(library.symbol("lv2_descriptor"))(0), host,
                      kRate);
    const auto put = [&](const Step& step, int offset) {
        if (step.status == 0) {
            instance.controls[step.data1] =
                lv2::portValue(step.data1, static_cast<float>(step.data2) * 0.01f);
            return;
        }
        std::vector<std::uint8_t> bytes;
        for (const int byte : {step.status, step.data1, step.data2}) {
            bytes.push_back(static_cast<std::uint8_t>(byte));
        }
        if (step.status == 0xC0 || step.status == 0xD0) bytes.pop_back();
        instance.send(offset, bytes);
    };
    return play(put, [&](int frames) { return instance.run(static_cast<std::uint32_t>(frames)); });
}
#endif

TEST(Song, GivesTheSameBitsThroughAllFormats) {
    const Sound expected = throughVst2();
    EXPECT_GT(expected.peak(), 0.05f);
    const std::pair<const char*, Sound> rows[] = {
        {"VST 3", throughVst3()},
        {"CLAP", throughClap()},
#ifdef QUARZEL_LV2
        {"LV2", throughLv2()},
#endif
    };
    for (const auto& [format, sound] : rows) {
        for (int i = 0; i < kFrames; ++i) {
            ASSERT_EQ(sound.left[i], expected.left[i]) << format << ' ' << i;
            ASSERT_EQ(sound.right[i], expected.right[i]) << format << ' ' << i;
        }
    }
}

}  // namespace
