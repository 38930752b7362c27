// What an LV2 host's audio thread calls takes nothing from the system: hard real-time capable.
#include <gtest/gtest.h>

#include "platform/folders.h"
#include "tests/plugin/lv2/driver.h"
#include "tests/plugin/vst2/call_watch.h"

extern "C" const LV2_Descriptor* lv2_descriptor(uint32_t index);

namespace {

using namespace lv2_driver;

TEST(Lv2AudioThread, TakesNothingFromTheSystem) {
    const platform::ScopedFolders folders(QUARZEL_DELIVERED, "");
    Host host;
    host.takesRequests = true;
    host.requests.reserve(state::kNumParams);
    Instance instance(lv2_descriptor(0), host);
    std::vector<float> samples(1024);
    instance.connect(lv2::kLeftPort, samples.data());
    instance.connect(lv2::kRightPort, samples.data());
    const Saved saved = instance.saved();
    watch::reset();
    for (int round = 0; round < 20; ++round) {
        for (int i = 0; i < state::kNumParams; ++i) {
            instance.controls[i] = lv2::portValue(i, (i * 7 + round * 3) % 11 / 10.0f);
        }
        instance.controls[lv2::kEnabledPort] = round % 6 == 5 ? 0.0f : 1.0f;
        instance.send(900, {0x90, static_cast<std::uint8_t>(30 + round * 3), 100});
        if (round % 3 == 1) instance.send(901, {0xC0, static_cast<std::uint8_t>(round)});
        if (round % 4 == 2) instance.restore(saved);
        host.requests.clear();
        {
            const watch::Watch watched;
            lv2_descriptor(0)->run(instance.handle, round % 5 == 4 ? 0 : 1024);
        }
        instance.clearMidi();
    }
    EXPECT_EQ(watch::calls(), "");
}

}  // namespace
