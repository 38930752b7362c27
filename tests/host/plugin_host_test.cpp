// Driving an instrument: names, values, event frames, and libraries that are not instruments.
#include "host/plugin_host.h"

#include <gtest/gtest.h>

#include "host/error.h"
#include "tests/support/temporary_folder.h"

namespace {

using host::PluginHost;

TEST(PluginHost, SetsProgramsAndParametersOfOneInstrument) {
    PluginHost host(TEST_INSTRUMENT, 44100, 64);
    PluginHost other(TEST_MAIN_INSTRUMENT, 96000, 32);  // exports main alone
    EXPECT_EQ(host.parameterDisplay(0), "50 %");
    host.setProgram(2);
    EXPECT_EQ(host.parameter(0), 0.25f);
    host.setParameter(2, 0.125f);
    EXPECT_EQ(host.parameter(2), 0.125f);
    EXPECT_EQ(host.parameterDisplay(2), "12");
    EXPECT_EQ(other.name(), "Test Instrument");
    EXPECT_EQ(other.parameter(0), 0.5f);
}

TEST(PluginHost, DeliversEveryEventOfABlockInItsFrame) {
    PluginHost host(TEST_INSTRUMENT, 44100, 4096);
    std::vector<host::BlockEvent> events;
    for (int frame = 0; frame < 4096; ++frame) events.push_back({frame, {0x9f, 60, 64}});
    events.insert(events.begin() + 7, {7, {0x8f, 60, 32}});  // two events in one frame
    host.resume();
    host.process(events, 4096);
    for (int frame = 0; frame < 4096; ++frame) {
        ASSERT_EQ(host.output(0)[frame], 0.5f) << frame;
        ASSERT_EQ(host.output(1)[frame], frame == 7 ? 0.25f : 0.5f) << frame;
    }
    host.process({}, 1);
    EXPECT_EQ(host.output(0)[0], 0.0f);
    EXPECT_EQ(host.output(1)[0], 0.0f);
}

}  // namespace
