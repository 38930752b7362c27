// What a host's audio thread calls takes nothing from the system.
#include <gtest/gtest.h>

#include "platform/folders.h"
#include "tests/plugin/clap/driver.h"
#include "tests/plugin/lv2/driver.h"
#include "tests/plugin/vst2/call_watch.h"
#include "tests/plugin/vst3/driver.h"

extern "C" const LV2_Descriptor* lv2_descriptor(uint32_t index);

namespace {

class AudioThreadOf : public testing::Test {
  protected:
    // Blocks with every parameter, among them blocks without frames.
    template <typename Prepare, typename Call>
    void playRounds(Prepare prepare, Call call) {
        watch::reset();
        for (int round = 0; round < 20; ++round) {
            prepare(round);
            const watch::Watch watched;
            call(round, round % 5 == 4 ? 0 : 1024);
        }
        EXPECT_EQ(watch::calls(), "");
    }
    static double valueOf(int index, int round, int frame = 0) {
        return (index * 7 + round * 3 + frame) % 11 / 10.0;
    }

    const platform::ScopedFolders folders_{QUARZEL_DELIVERED, ""};
    std::vector<float> samples_ = std::vector<float>(1024);
    float* channels_[2] = {samples_.data(), samples_.data()};
};

TEST_F(AudioThreadOf, Vst3) {
    using namespace driver;
    const Ref<IPluginFactory> module(factory());
    Instance instance(module.get());
    instance.start();
    AudioBusBuffers bus{2, 0, {channels_}};
    const auto prepare = [&](int round) {
        instance.changes = Changes();
        instance.events = Events();
        for (int32 i = 0; i < kParameterCount; ++i) {
            for (const int32 frame : {700, 3, 2000}) {
                instance.changes.add(parameterInfo(i).id, frame, valueOf(i, round, frame));
            }
        }
        instance.events.note(true, 30 + round * 3, 100, 900);
    };
    playRounds(prepare, [&](int, int32 frames) {
        ProcessData data = instance.block(frames);
        data.numOutputs = 1;
        data.outputs = &bus;
        instance.processor->process(data);
        instance.processor->getTailSamples();
    });
}

TEST_F(AudioThreadOf, Clap) {
    using namespace clap_driver;
    TestHost host;
    Instance instance(host);
    instance.activate();
    const auto* const tail = instance.extension<PluginTail>(kExtTail);
    AudioBuffer buffer{channels_, nullptr, 2, 0, 0};
    const OutputEvents out{nullptr, [](const OutputEvents*, const EventHeader*) { return true; }};
    const auto prepare = [&](int round) {
        Events& events = instance.events;
        events.clear();
        for (uint32_t i = 0; i < kParameterCount; ++i) {
            const ParamInfo info = parameterInfo(i);
            for (const uint32_t time : {700u, 3u, 2000u}) {
                const double value = valueOf(static_cast<int>(i), round, static_cast<int>(time));
                events.value(info.id, value * info.max_value, time);
            }
        }
        events.note(kEventNoteOn, {round, 0, 0, static_cast<int16_t>(30 + round)}, 0.8, 900);
        events.note(kEventNoteChoke, {round - 3, -1, -1, -1}, 0.0, 950);
        events.midi(0xC0, round, 0, 500);
        events.midi(0xB0, 20, round, 400);
        instance.instrument().setParameterAutomated(round, 0.3f);
    };
    playRounds(prepare, [&](int round, uint32_t frames) {
        const Process block{-1, frames, nullptr, nullptr, &buffer, 0, 1, &instance.events.in, &out};
        instance.plugin->process(instance.plugin, &block);
        instance.params->flush(instance.plugin, block.in_events, block.out_events);
        tail->get(instance.plugin);
        if (round % 7 == 6) instance.plugin->reset(instance.plugin);
    });
}

TEST_F(AudioThreadOf, Lv2) {
    using namespace lv2_driver;
    Host host;
    host.takesRequests = true;
    host.requests.reserve(state::kNumParams);
    Instance instance(lv2_descriptor(0), host);
    instance.connect(lv2::kLeftPort, samples_.data());
    instance.connect(lv2::kRightPort, samples_.data());
    const Saved saved = instance.saved();
    const auto prepare = [&](int round) {
        instance.clearMidi();
        for (int i = 0; i < state::kNumParams; ++i) {
            const auto value = static_cast<float>(valueOf(i, round));
            instance.controls[i] = lv2::portValue(i, value);
        }
        instance.controls[lv2::kEnabledPort] = round % 6 == 5 ? 0.0f : 1.0f;
        instance.send(900, {0x90, static_cast<std::uint8_t>(30 + round * 3), 100});
        if (round % 3 == 1) instance.send(901, {0xC0, static_cast<std::uint8_t>(round)});
        if (round % 4 == 2) instance.restore(saved);
        host.requests.clear();
    };
    playRounds(prepare,
               [&](int, std::uint32_t frames) { lv2_descriptor(0)->run(instance.handle, frames); });
}

}  // namespace
