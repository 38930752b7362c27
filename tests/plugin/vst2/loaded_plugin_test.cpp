// The instrument as a host sees it: loaded from its file and called through its record.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "tests/plugin/vst2/plugin_under_test.h"

namespace {

constexpr VstIntPtr kLowest = INTPTR_MIN;

class LoadedPlugin : public testing::Test {
  protected:
    TestHost host_;
    PluginLibrary library_;
};

TEST_F(LoadedPlugin, HasOneEntryPointForHostsWithAVersion) {
    ASSERT_NE(library_.entry(), nullptr);
    EXPECT_EQ(library_.entry("VSTPluginMain"), library_.entry("main"));
    host_.answers.clear();
    EXPECT_EQ(library_.entry()(TestHost::callback), nullptr);
    ASSERT_EQ(host_.calls.size(), 1u);
    const TestHost::Call& call = host_.calls.front();
    EXPECT_EQ(call.opcode, audioMasterVersion);
    EXPECT_TRUE(!call.effect && !call.index && !call.value && !call.ptr && call.opt == 0.0f);
    EXPECT_EQ(library_.entry()(nullptr), nullptr);
}

TEST_F(LoadedPlugin, StatesItsIdentity) {
    PluginInstance plugin(library_.entry());
    EXPECT_EQ(plugin->magic, 0x56737450);
    EXPECT_EQ(plugin->uniqueID, 0x73656E69);
    EXPECT_EQ(plugin->version, 1);
    EXPECT_EQ(plugin->numPrograms, 128);
    EXPECT_EQ(plugin->numParams, 42);
    EXPECT_EQ(plugin->numInputs, 0);
    EXPECT_EQ(plugin->numOutputs, 2);
    EXPECT_EQ(plugin->flags & ~effFlagsHasEditor,
              effFlagsCanReplacing | effFlagsProgramChunks | effFlagsIsSynth);
    EXPECT_EQ(plugin->ioRatio, 1.0f);
    EXPECT_TRUE(plugin->process && plugin->processReplacing && plugin->processDoubleReplacing);
    EXPECT_EQ(plugin->resvd1 | plugin->resvd2 | plugin->initialDelay, 0);
    for (const char byte : plugin->future) EXPECT_EQ(byte, 0);
}

TEST_F(LoadedPlugin, AnswersEachOpcode) {
    const struct {
        VstInt32 opcode;
        VstInt32 index;
        VstIntPtr value;
        const char* given;  // the buffer before
        VstIntPtr answer;
        const char* text = nullptr;  // the buffer after; null: as before
    } rows[] = {
        {effIdentify, 0, 0, "", 0x4E764566},
        {effGetVstVersion, 0, 0, "", 2400},
        {effGetVendorVersion, 0, 0, "", 1},
        {effGetPlugCategory, 0, 0, "", kPlugCategSynth},
        {effGetEffectName, 0, 0, "", 1, "Quarzel Strings"},
        {effGetProductString, 0, 0, "", 1, "Quarzel Strings"},
        {effGetVendorString, 0, 0, "", 1, "tembrilon.com"},
        {effGetNumMidiInputChannels, 0, 0, "", 1},
        {effGetNumMidiOutputChannels, 0, 0, "", 0},
        {effGetNumProgramCategories, 0, 0, "", 1},
        {effKeysRequired, 0, 0, "", 1},  // means no
        {effCanDo, 0, 0, "receiveVstEvents", 1},
        {effCanDo, 0, 0, "receiveVstMidiEvent", 1},
        {effCanDo, 0, 0, "receiveVstMidiEvents", -1},
        {effCanDo, 0, 0, "ReceiveVstEvents", -1},
        {effCanDo, 0, 0, "sendVstEvents", -1},
        {effCanDo, 0, 0, "", -1},
        {effVendorSpecific, 0x73744341, 0x57686565, "", 0},  // the wheel, by another way
        {effSetEditKnobMode, 0, 2, "", 1},
        {effSetEditKnobMode, 0, 3, "", 0},
        {effSetEditKnobMode, 0, -1, "", 0},
        {effSetBlockSizeAndSampleRate, 0, 64, "", 1},
        {effCanBeAutomated, 5, 0, "", 1},
        {effString2Parameter, 5, 0, "0.5", 0},
        {effGetParamName, 1, 0, "", 0, "Pan"},
        {effGetParamName, 9, 0, "", 0, "Env-Sustain"},
        {effGetParamDisplay, 1, 0, "", 0, "0.500"},
        {effGetParamLabel, 1, 0, "x", 0, ""},
        {effSetProgramName, 0, 0, "First", 0},
        {effSetProgram, 0, 127, "", 0},
        {effGetProgram, 0, 0, "", 127},
        {effSetProgram, 0, 128, "", 0},
        {effSetProgram, 0, -1, "", 0},
        {effSetProgram, 0, kLowest, "", 0},
        {effSetProgram, 0, VstIntPtr{1} << 32, "", 0},
        {effGetProgram, 0, 0, "", 127},
        {effSetProgramName, 0, 0, "Last", 0},
        {effGetProgramName, 0, 0, "", 0, "Last"},
        {effGetProgramNameIndexed, 0, -1, "", 1, "First"},
        {effGetProgramNameIndexed, 127, 0, "", 1, "Last"},
        {effGetProgramNameIndexed, 128, 0, "kept", 0},
        {effCopyProgram, 3, 0, "", 1},
        {effGetProgramNameIndexed, 3, 0, "", 1, "Last"},
        {effCopyProgram, 128, 0, "", 0},
        {effSetChunk, 1, 24, "Renamed", 1},  // 24 bytes: the name alone
        {effGetProgramName, 0, 0, "", 0, "Renamed"},
        {effGetOutputProperties, 6, 0, "kept", 0},
        {effGetInputProperties, 0, 0, "kept", 0},
        {effGetMidiKeyName, 1, 0, "kept", 0},
    };
    PluginInstance plugin(library_.entry());
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << "opcode " << row.opcode << ", index " << row.index
                                        << ", value " << row.value << ", " << row.given);
        alignas(8) char buffer[256];
        std::memset(buffer, '#', sizeof buffer);
        std::strcpy(buffer, row.given);
        EXPECT_EQ(plugin.dispatch(row.opcode, row.index, row.value, buffer, 48000.0f), row.answer);
        EXPECT_STREQ(buffer, row.text ? row.text : row.given);
        const size_t written = std::max(std::strlen(buffer), std::strlen(row.given)) + 1;
        std::string rest(256 - written, '#');
        // The name ends one byte past its published limit.
        if (row.opcode == effGetEffectName) rest[kVstMaxEffectNameLen - written] = '\0';
        EXPECT_EQ(std::string(buffer + written, std::end(buffer)), rest);
    }
    const struct {
        VstInt32 isPreset;
        VstIntPtr size;
    } chunks[] = {{0, 26088}, {1, 192}, {2, 192}};
    for (const auto& row : chunks) {
        void* chunk = nullptr;
        ASSERT_EQ(plugin.dispatch(effGetChunk, row.isPreset, 0, &chunk), row.size);
        const std::string before(static_cast<const char*>(chunk), static_cast<size_t>(row.size));
        std::string copy = before;
        plugin.set(1, 0.875f);
        EXPECT_EQ(plugin.dispatch(effSetChunk, row.isPreset, row.size, copy.data()), 1);
        EXPECT_EQ(plugin.dispatch(effGetChunk, row.isPreset, 0, &chunk), row.size);
        EXPECT_EQ(before, std::string(static_cast<const char*>(chunk), before.size()));
    }
}

TEST_F(LoadedPlugin, DescribesSixOutputPins) {
    PluginInstance plugin(library_.entry());
    for (const VstInt32 pin : {INT32_MIN, -1, 0, 1, 2, 5, 6, INT32_MAX}) {
        SCOPED_TRACE(pin);
        VstPinProperties found;
        std::memset(&found, '#', sizeof found);
        VstPinProperties expected = found;
        const bool answered = pin >= 0 && pin < 6;
        if (answered) {
            std::strcpy(expected.label, "ZLM");
            expected.flags = pin < 2 ? 3 : 1;
        }
        EXPECT_EQ(plugin.dispatch(effGetOutputProperties, pin, 0, &found), answered);
        EXPECT_EQ(std::memcmp(&found, &expected, sizeof found), 0);
    }
}

TEST_F(LoadedPlugin, RedrawsTheHostOnceMoreWhenItAnswers) {
    PluginInstance plugin(library_.entry());
    for (const VstIntPtr answer : {0, 1}) {
        host_.answers[audioMasterUpdateDisplay] = answer;
        host_.calls.clear();
        plugin.dispatch(effSetProgram, 0, 1);
        const auto updates = std::count_if(
            host_.calls.begin(), host_.calls.end(),
            [](const TestHost::Call& call) { return call.opcode == audioMasterUpdateDisplay; });
        EXPECT_EQ(updates, 1 + answer);
    }
}

}  // namespace
