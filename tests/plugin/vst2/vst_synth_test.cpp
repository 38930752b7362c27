// VstSynth's own operations, called directly. It is too large for the stack on some systems.
#include <gtest/gtest.h>

#include <memory>

#include "plugin/vst2/vst_synth.h"
#include "tests/plugin/vst2/recording_effect.h"
#include "tests/plugin/vst2/test_host.h"

namespace vst2 {
namespace {

constexpr VstInt32 kMessage = 0x73744341;  // 'stCA'
constexpr VstInt32 kTurn = 0x57686565;     // 'Whee'

TEST(VstSynth, PassesWheelMessagesToItsEditor) {
    CallNote note(nullptr);
    const auto synth = std::make_unique<VstSynth>(nullptr);
    synth->setEditor(new RecordingEditor(synth.get(), note));
    struct {
        VstInt32 lArg;
        VstIntPtr lArg2;
        float distance;
        const char* reached;
        VstIntPtr answer;
    } const rows[] = {
        {kMessage, kTurn, 1.0f, "onWheel 1", 1},
        {kMessage, kTurn, -2.0f, "onWheel -2", 0},  // this editor uses only upward turns
        {kTurn, kMessage, 1.0f, "", 0},
        {kMessage, 0, 1.0f, "", 0},
        {kMessage, kTurn + (VstIntPtr{1} << 32), 1.0f, "", 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(synth->onWheelMessage(row.lArg, row.lArg2, nullptr, row.distance), row.answer);
        EXPECT_EQ(note.take(), row.reached);
    }
    AEffect* const record = synth->getAeffect();
    EXPECT_EQ(record->dispatcher(record, effVendorSpecific, kMessage, kTurn, nullptr, 1.0f), 0);
    EXPECT_EQ(note.take(), "");
    synth->setEditor(nullptr);
    EXPECT_EQ(synth->onWheelMessage(kMessage, kTurn, nullptr, 1.0f), 0);
}

TEST(VstSynth, IsASynthOnlyForAHost) {
    const auto alone = std::make_unique<VstSynth>(nullptr);
    EXPECT_EQ(alone->getPlugCategory(), kPlugCategUnknown);
    EXPECT_EQ(alone->getAeffect()->flags,
              effFlagsHasEditor | effFlagsCanReplacing | effFlagsProgramChunks);
    TestHost host;
    const auto hosted = std::make_unique<VstSynth>(TestHost::callback);
    EXPECT_EQ(hosted->getPlugCategory(), kPlugCategSynth);
}

TEST(VstSynth, AdoptsTheHostsRate) {
    struct {
        VstIntPtr answer;
        float rate;
    } const rows[] = {{0, 44100.0f},
                      {-48000, 44100.0f},
                      {96000, 96000.0f},
                      {5, 44100.0f},
                      {VstIntPtr{1} << 40, 44100.0f}};
    for (const auto& row : rows) {
        TestHost host;
        host.answers[audioMasterGetSampleRate] = row.answer;
        const auto synth = std::make_unique<VstSynth>(TestHost::callback);
        EXPECT_EQ(synth->getSampleRate(), row.rate) << row.answer;
    }
}

}  // namespace
}  // namespace vst2
