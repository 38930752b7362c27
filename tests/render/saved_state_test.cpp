// The instrument saved to files and restored: same names, same values, same bits.
#include <gtest/gtest.h>

#include "host/patches.h"
#include "tests/support/temporary_folder.h"

namespace {

using host::Extent;
using host::PluginHost;

constexpr int kBlock = 512;
enum Index { kHighPass = 4, kBrightness = 5, kReverb = 37 };

// Plays a chord over all sections and its release. Returns both channels.
std::vector<float> phrase(PluginHost& host) {
    // Each set moves "HP" half way to its value. Repeat until it arrives.
    for (int i = 0; i < 30; ++i) host.setParameter(kHighPass, host.parameter(kHighPass));
    std::vector<float> samples;
    host.resume();
    for (int block = 0; block < 60; ++block) {
        std::vector<host::BlockEvent> events;
        for (const int key : {36, 60, 64, 71}) {
            if (block == 0) events.push_back({key, {0x90, static_cast<uint8_t>(key), 100}});
            if (block == 40) events.push_back({key, {0x80, static_cast<uint8_t>(key), 0}});
        }
        host.process(events, kBlock);
        for (int channel = 0; channel < 2; ++channel) {
            samples.insert(samples.end(), host.output(channel), host.output(channel) + kBlock);
        }
    }
    host.suspend();
    return samples;
}

// Gives every program its own name and values. All share "HP" and "Brigthness", which glide from
// their previous values, so the sound depends on the program alone.
void fillPrograms(PluginHost& host) {
    for (int program = 0; program < host.programCount(); ++program) {
        host.setProgram(program);
        host.setProgramName("Patch " + std::to_string(program));
        host.setParameter(kReverb, 1.0f);
        const int own = program % host.parameterCount();
        if (own == kHighPass || own == kBrightness) continue;
        host.setParameter(own, static_cast<float>(program) / 127.0f);
    }
}

TEST(SavedState, ComesBackBitForBitFromFiles) {
    const TemporaryFolder folder;
    PluginHost saved(QUARZEL_PLUGIN, 44100, kBlock), restored(QUARZEL_PLUGIN, 44100, kBlock);
    fillPrograms(saved);
    saved.setProgram(98);  // "Horn"
    host::saveBank(saved, folder.path("a.fxb"));
    host::savePreset(saved, folder.path("a.fxp"));
    EXPECT_EQ(folder.read("a.fxb").size(), 160u + 26088);
    EXPECT_EQ(folder.read("a.fxp").size(), 60u + 192);
    EXPECT_EQ(folder.read("a.fxb").substr(160), saved.chunk(Extent::kBank));

    restored.setProgram(5);
    host::loadPreset(restored, folder.path("a.fxp"));
    EXPECT_EQ(restored.program(), 5);
    EXPECT_EQ(restored.programName(5), "Patch 98");
    EXPECT_EQ(restored.programName(98), "Init");
    EXPECT_EQ(restored.chunk(Extent::kProgram), saved.chunk(Extent::kProgram));
    // In whatever order a host goes through it.
    restored.setProgram(98);
    restored.setChunk(Extent::kBank, saved.chunk(Extent::kBank));
    restored.setProgram(98);
    host::loadBank(restored, folder.path("a.fxb"));
    restored.setProgram(3);
    restored.setProgram(98);
    EXPECT_EQ(restored.chunk(Extent::kBank), saved.chunk(Extent::kBank));
    for (int i = 0; i < saved.parameterCount(); ++i) {
        EXPECT_EQ(restored.parameter(i), saved.parameter(i)) << i;
    }
    const auto sound = phrase(saved);
    EXPECT_EQ(phrase(restored), sound);
    EXPECT_NE(sound, std::vector<float>(sound.size()));
}

}  // namespace
