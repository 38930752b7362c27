// What a VST 3 host's audio thread calls takes nothing from the system.
#include <gtest/gtest.h>

#include "platform/folders.h"
#include "tests/plugin/vst2/call_watch.h"
#include "tests/plugin/vst3/driver.h"

namespace {

using namespace driver;

TEST(Vst3AudioThread, TakesNothingFromTheSystem) {
    const platform::ScopedFolders folders(QUARZEL_DELIVERED, "");
    const Ref<IPluginFactory> module(factory());
    Instance instance(module.get());
    instance.start();
    std::vector<float> samples(1024);
    float* channels[] = {samples.data(), samples.data()};
    AudioBusBuffers bus{2, 0, {channels}};
    watch::reset();
    for (int round = 0; round < 20; ++round) {
        for (int32 i = 0; i < kParameterCount; ++i) {
            const ParamID id = parameterInfo(i).id;
            for (const int32 offset : {700, 3, 2000}) {
                instance.changes.add(id, offset, (i * 7 + round * 3 + offset) % 11 / 10.0);
            }
        }
        instance.events.note(true, 30 + round * 3, 100, 900);
        ProcessData data = instance.block(round % 5 == 4 ? 0 : 1024);
        data.numOutputs = 1;
        data.outputs = &bus;
        {
            const watch::Watch watched;
            instance.processor->process(data);
            instance.processor->getTailSamples();
        }
        instance.changes = Changes();
        instance.events = Events();
    }
    EXPECT_EQ(watch::calls(), "");
}

}  // namespace
