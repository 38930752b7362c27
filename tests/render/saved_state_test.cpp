// A host saves and restores the instrument: same names, same values, same bits.
#include <cstring>

#include <gtest/gtest.h>

#include "host/patches.h"
#include "tests/host/midi_bytes.h"
#include "tests/support/temporary_folder.h"

namespace {

using host::Extent;
using host::PluginHost;

constexpr int kBlock = 512;
enum Index { kHighPass = 4, kBrightness = 5, kHorn = 14, kReverb = 37 };

class SavedState : public testing::Test {
  protected:
    host::PluginHost saved_{QUARZEL_PLUGIN, 44100, kBlock};
    host::PluginHost restored_{QUARZEL_PLUGIN, 44100, kBlock};
};

// Each set moves "HP" half way to its value. Repeat until it arrives.
void settle(host::PluginHost& host) {
    for (int i = 0; i < 30; ++i) host.setParameter(kHighPass, host.parameter(kHighPass));
}

// Plays a chord over all sections and its release. Returns both channels.
std::vector<float> phrase(host::PluginHost& host) {
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

void expectSameSound(host::PluginHost& one, host::PluginHost& other) {
    settle(one);
    settle(other);
    const auto first = phrase(one), second = phrase(other);
    EXPECT_EQ(std::memcmp(first.data(), second.data(), first.size() * sizeof(float)), 0);
    EXPECT_NE(first, std::vector<float>(first.size(), 0.0f));
}

void expectSameState(host::PluginHost& one, host::PluginHost& other) {
    EXPECT_EQ(one.chunk(host::Extent::kBank), other.chunk(host::Extent::kBank));
    EXPECT_EQ(one.program(), other.program());
    for (int i = 0; i < one.parameterCount(); ++i) {
        EXPECT_EQ(one.parameterName(i), other.parameterName(i));
        EXPECT_EQ(one.parameter(i), other.parameter(i)) << i;
    }
    for (int i = 0; i < one.programCount(); ++i) {
        EXPECT_EQ(one.programName(i), other.programName(i));
    }
}

// Gives every program its own name and values. All share "HP" and "Brigthness", which glide from
// their previous values, so the sound depends on the program alone.
void fillPrograms(host::PluginHost& host) {
    for (int program = 0; program < host.programCount(); ++program) {
        host.setProgram(program);
        host.setProgramName("Patch " + std::to_string(program));
        host.setParameter(kReverb, 1.0f);
        const int own = program % host.parameterCount();
        if (own == kHighPass || own == kBrightness) continue;
        host.setParameter(own, static_cast<float>(program) / 127.0f);
    }
}

TEST_F(SavedState, ComesBackBitForBitFromFiles) {
    const TemporaryFolder folder;
    fillPrograms(saved_);
    saved_.setProgram(98);
    host::saveBank(saved_, folder.path("a.fxb"));
    host::savePreset(saved_, folder.path("a.fxp"));
    EXPECT_EQ(folder.read("a.fxb").size(), 160u + 26088);
    EXPECT_EQ(folder.read("a.fxp").size(), 60u + 192);
    EXPECT_EQ(folder.read("a.fxb").substr(160), saved_.chunk(host::Extent::kBank));

    restored_.setProgram(5);
    host::loadPreset(restored_, folder.path("a.fxp"));
    EXPECT_EQ(restored_.program(), 5);
    EXPECT_EQ(restored_.programName(5), "Patch 98");
    EXPECT_EQ(restored_.programName(98), "Init");
    EXPECT_EQ(restored_.chunk(Extent::kProgram), saved_.chunk(Extent::kProgram));
    host::loadBank(restored_, folder.path("a.fxb"));
    expectSameState(saved_, restored_);
    expectSameSound(saved_, restored_);
}

TEST_F(SavedState, TakesListsThoughItHasChunks) {
    const TemporaryFolder folder;
    const auto preset = [](const std::string& name, unsigned value) {
        const std::string entry = "FxCk" + bigEndian(1, 4) + "seni" + bigEndian(1, 4) +
                                  bigEndian(2, 4) + name + std::string(28 - name.size(), '\0') +
                                  bigEndian(value, 4) + bigEndian(0x3F000000, 4);
        return "CcnK" + bigEndian(static_cast<unsigned>(entry.size()), 4) + entry;
    };
    const std::string bank = "FxBk" + bigEndian(1, 4) + "seni" + bigEndian(1, 4) + bigEndian(2, 4) +
                             std::string(128, '\0') +
                             preset("A name of 27 bytes, to a T.", 0x3E800000) +
                             preset("Second", 0x40000000);
    host::loadBank(
        restored_,
        folder.write("a.fxb", "CcnK" + bigEndian(static_cast<unsigned>(bank.size()), 4) + bank));
    EXPECT_EQ(restored_.programName(0), "A name of 27 bytes, to ");
    EXPECT_EQ(restored_.programName(1), "Second");
    EXPECT_EQ(restored_.parameter(0), 0.25f);
    restored_.setProgram(1);
    EXPECT_EQ(restored_.parameter(0), 1.0f);  // clamped by the instrument
    restored_.setProgram(2);
    host::loadPreset(restored_, folder.write("a.fxp", preset("Third", 0x3F400000)));
    EXPECT_EQ(restored_.programName(2), "Third");
    EXPECT_EQ(restored_.parameter(0), 0.75f);
}

TEST_F(SavedState, IsTheSameInWhateverOrderAHostGoesThroughIt) {
    fillPrograms(saved_);
    saved_.setProgram(98);
    const std::string bank = saved_.chunk(host::Extent::kBank);

    restored_.setProgram(98);  // of the bank being replaced
    restored_.setChunk(host::Extent::kBank, bank);
    restored_.setProgram(98);  // again, right after
    restored_.setChunk(host::Extent::kBank, bank);
    restored_.setProgram(3);
    restored_.setProgram(98);
    expectSameState(saved_, restored_);
    expectSameSound(saved_, restored_);
}

}  // namespace
