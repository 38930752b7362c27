// The instrument as a host sees it: loaded from its file and called through its record.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "tests/plugin/vst2/plugin_under_test.h"

namespace {

constexpr VstIntPtr kLowest = INTPTR_MIN;
constexpr VstIntPtr kHighest = INTPTR_MAX;

class LoadedPlugin : public testing::Test {
  protected:
    std::string textOf(PluginInstance& plugin, VstInt32 opcode) {
        char text[256];
        std::memset(text, '#', sizeof text);
        EXPECT_EQ(plugin.dispatch(opcode, 0, 0, text), 1);
        return text;
    }

    TestHost host_;
    PluginLibrary library_;
};

TEST_F(LoadedPlugin, HasOneEntryPointUnderTwoNames) {
    ASSERT_NE(library_.entry(), nullptr);
    EXPECT_EQ(library_.entry("VSTPluginMain"), library_.entry("main"));
}

TEST_F(LoadedPlugin, RefusesAHostWithoutAVersion) {
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
    EXPECT_EQ(textOf(plugin, effGetEffectName), "Quarzel Strings");
    EXPECT_EQ(textOf(plugin, effGetProductString), "Quarzel Strings");
    EXPECT_EQ(textOf(plugin, effGetVendorString).size(), 13u);
    EXPECT_EQ(plugin.dispatch(effGetVendorVersion), 1);
    EXPECT_EQ(plugin.dispatch(effGetPlugCategory), kPlugCategSynth);
    EXPECT_EQ(plugin.dispatch(effGetVstVersion), 2400);
    EXPECT_EQ(plugin.dispatch(effGetNumMidiInputChannels), 1);
    EXPECT_EQ(plugin.dispatch(effGetNumMidiOutputChannels), 0);
}

TEST_F(LoadedPlugin, WritesNoTextBeyondItsLimit) {
    struct {
        VstInt32 opcode;
        size_t limit;  // bytes
    } const rows[] = {{effGetEffectName, kVstMaxEffectNameLen + 1},
                      {effGetProductString, kVstMaxProductStrLen},
                      {effGetVendorString, kVstMaxVendorStrLen}};
    PluginInstance plugin(library_.entry());
    for (const auto& row : rows) {
        SCOPED_TRACE(row.opcode);
        char text[128];
        std::memset(text, '#', sizeof text);
        plugin.dispatch(row.opcode, 0, 0, text);
        EXPECT_EQ(std::string(text + row.limit, std::end(text)),
                  std::string(sizeof text - row.limit, '#'));
    }
    char name[64];
    std::memset(name, '#', sizeof name);
    plugin.dispatch(effGetEffectName, 0, 0, name);
    EXPECT_EQ(name[kVstMaxEffectNameLen], '\0');
}

TEST_F(LoadedPlugin, CanReceiveEventsAndNothingElse) {
    struct {
        const char* text;
        VstIntPtr answer;
    } const rows[] = {
        {"receiveVstEvents", 1},      {"receiveVstMidiEvent", 1}, {"", -1},
        {"receiveVstMidiEvents", -1}, {"ReceiveVstEvents", -1},   {"receiveVst", -1},
        {"sendVstEvents", -1},        {"receiveVstTimeInfo", -1}, {"receiveVstEvents ", -1},
    };
    PluginInstance plugin(library_.entry());
    for (const auto& row : rows) {
        EXPECT_EQ(plugin.dispatch(effCanDo, 0, 0, const_cast<char*>(row.text)), row.answer)
            << row.text;
    }
}

TEST_F(LoadedPlugin, DescribesSixOutputPins) {
    struct {
        VstInt32 pin;
        bool answered;
        VstInt32 flags;
    } const rows[] = {{INT32_MIN, false, 0}, {-1, false, 0}, {0, true, 3},  {1, true, 3},
                      {2, true, 1},          {5, true, 1},   {6, false, 0}, {INT32_MAX, false, 0}};
    PluginInstance plugin(library_.entry());
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pin);
        VstPinProperties pin;
        std::memset(&pin, '#', sizeof pin);
        const VstPinProperties before = pin;
        EXPECT_EQ(plugin.dispatch(effGetOutputProperties, row.pin, 0, &pin), row.answered);
        if (row.answered) {
            EXPECT_EQ(pin.flags, row.flags);
            EXPECT_STREQ(pin.label, "ZLM");
            EXPECT_EQ(pin.arrangementType, before.arrangementType);
            EXPECT_EQ(std::memcmp(pin.shortLabel, before.shortLabel, sizeof pin.shortLabel), 0);
        } else {
            EXPECT_EQ(std::memcmp(&pin, &before, sizeof pin), 0);
        }
        EXPECT_EQ(plugin.dispatch(effGetInputProperties, row.pin, 0, &pin), 0);
    }
}

TEST_F(LoadedPlugin, ChangesItsProgramWithinRangeOnly) {
    PluginInstance plugin(library_.entry());
    plugin.dispatch(effSetProgram, 0, 127);
    for (const VstIntPtr refused : {VstIntPtr{128}, VstIntPtr{-1}, kLowest, kHighest}) {
        plugin.dispatch(effSetProgram, 0, refused);
        EXPECT_EQ(plugin.dispatch(effGetProgram), 127) << refused;
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

TEST_F(LoadedPlugin, SurvivesEveryOpcodeWithoutPointers) {
    std::vector<VstInt32> opcodes = {-1, INT32_MIN, INT32_MAX, 0x73744341, 9999};
    for (VstInt32 opcode = 0; opcode <= 100; ++opcode) opcodes.push_back(opcode);
    struct {
        VstInt32 index;
        VstIntPtr value;
        float opt;
    } const arguments[] = {{0, 0, 0.0f},        {-1, 0, -1.0f},      {INT32_MAX, 0, INFINITY},
                           {INT32_MIN, 0, NAN}, {0, kHighest, 0.0f}, {0, kLowest, 0.0f},
                           {127, 1, 1e30f}};
    PluginInstance plugin(library_.entry());
    for (const VstInt32 opcode : opcodes) {
        if (opcode == effClose) continue;
        for (const auto& argument : arguments) {
            SCOPED_TRACE(testing::Message() << "opcode " << opcode << ", index " << argument.index
                                            << ", value " << argument.value);
            // Only for these opcodes is the value an address.
            const bool valueIsAddress =
                opcode == effSetSpeakerArrangement || opcode == effGetSpeakerArrangement;
            plugin.dispatch(opcode, argument.index, valueIsAddress ? 0 : argument.value, nullptr,
                            argument.opt);
        }
    }
    EXPECT_EQ(plugin.dispatch(effGetVstVersion), 2400);
    plugin->setParameter(plugin.record(), INT32_MIN, NAN);
    plugin->setParameter(plugin.record(), INT32_MAX, INFINITY);
    for (const VstInt32 index : {INT32_MIN, -1, 41, 42, 43, 99999, INT32_MAX}) {
        EXPECT_TRUE(std::isfinite(plugin->getParameter(plugin.record(), index))) << index;
    }
}

TEST_F(LoadedPlugin, AddsNothingThroughTheAccumulatingEntry) {
    PluginInstance plugin(library_.entry());
    std::vector<float> left(64, 0.5f);
    std::vector<float> right(64, -0.5f);
    float* outputs[] = {left.data(), right.data()};
    plugin->process(plugin.record(), nullptr, outputs, 64);
    EXPECT_EQ(left, std::vector<float>(64, 0.5f));
    EXPECT_EQ(right, std::vector<float>(64, -0.5f));
}

TEST_F(LoadedPlugin, KeepsItsInstancesApart) {
    auto first = std::make_unique<PluginInstance>(library_.entry());
    PluginInstance second(library_.entry());
    EXPECT_NE(first->record(), second.record());
    first->dispatch(effSetProgram, 0, 3);
    second.dispatch(effSetProgram, 0, 5);
    EXPECT_EQ(first->dispatch(effGetProgram), 3);
    first.reset();
    EXPECT_EQ(second.dispatch(effGetProgram), 5);
}

}  // namespace
