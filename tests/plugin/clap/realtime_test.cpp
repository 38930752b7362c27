// What a CLAP host's audio thread calls takes nothing from the system.
#include <gtest/gtest.h>

#include "platform/folders.h"
#include "tests/plugin/clap/driver.h"
#include "tests/plugin/vst2/call_watch.h"

namespace {

using namespace clap_driver;

TEST(ClapAudioThread, TakesNothingFromTheSystem) {
    const platform::ScopedFolders folders(QUARZEL_DELIVERED, "");
    TestHost host;
    Instance instance(host);
    instance.activate();
    const auto* const tail = instance.extension<PluginTail>(kExtTail);
    std::vector<float> samples(1024);
    float* channels[] = {samples.data(), samples.data()};
    AudioBuffer buffer{channels, nullptr, 2, 0, 0};
    const OutputEvents out{nullptr, [](const OutputEvents*, const EventHeader*) { return true; }};
    watch::reset();
    for (int round = 0; round < 20; ++round) {
        for (uint32_t i = 0; i < kParameterCount; ++i) {
            const ParamInfo info = parameterInfo(i);
            for (const uint32_t time : {700u, 3u, 2000u}) {
                instance.events.value(
                    info.id, (i * 7 + round * 3 + time) % 11 / 10.0 * info.max_value, time);
            }
        }
        instance.events.note(kEventNoteOn, {round, 0, 0, static_cast<int16_t>(30 + round)}, 0.8,
                             900);
        instance.events.note(kEventNoteChoke, {round - 3, -1, -1, -1}, 0.0, 950);
        instance.events.midi(0xC0, round, 0, 500);
        instance.events.midi(0xB0, 20, round, 400);
        instance.instrument().setParameterAutomated(round, 0.3f);
        Process block{};
        block.frames_count = round % 5 == 4 ? 0 : 1024;
        block.audio_outputs = &buffer;
        block.audio_outputs_count = 1;
        block.in_events = &instance.events.in;
        block.out_events = &out;
        {
            const watch::Watch watched;
            instance.plugin->process(instance.plugin, &block);
            instance.params->flush(instance.plugin, block.in_events, block.out_events);
            tail->get(instance.plugin);
            if (round % 7 == 6) instance.plugin->reset(instance.plugin);
        }
        instance.events.clear();
    }
    EXPECT_EQ(watch::calls(), "");
}

}  // namespace
