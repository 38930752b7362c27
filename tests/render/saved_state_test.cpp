// The instrument saved to files and restored: same names, same values.
#include <gtest/gtest.h>

#include "host/patches.h"
#include "tests/support/temporary_folder.h"

namespace {

using host::Extent;
using host::PluginHost;

constexpr int kBlock = 512;
constexpr int kReverb = 37;

// Gives every program its own name and values.
void fillPrograms(PluginHost& host) {
    for (int program = 0; program < host.programCount(); ++program) {
        host.setProgram(program);
        host.setProgramName("Patch " + std::to_string(program));
        host.setParameter(kReverb, 1.0f);
        host.setParameter(program % host.parameterCount(), static_cast<float>(program) / 127.0f);
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
}

}  // namespace
