// The base classes: their record, their state, and their calls to the host.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

#include "tests/plugin/vst2/recording_effect.h"
#include "tests/plugin/vst2/test_host.h"

namespace vst2 {
namespace {

// Overrides only the pure virtual functions.
class PlainEffect : public AudioEffectX {
  public:
    explicit PlainEffect(audioMasterCallback host) : AudioEffectX(host, 128, 42) {}
    void processReplacing(float**, float**, VstInt32) override {}
};

TEST(AudioEffect, FillsItsRecord) {
    PlainEffect effect(nullptr);
    const AEffect& record = *effect.getAeffect();
    EXPECT_EQ(record.magic, 0x56737450);
    EXPECT_EQ(record.numPrograms, 128);
    EXPECT_EQ(record.numParams, 42);
    EXPECT_EQ(record.numInputs, 1);
    EXPECT_EQ(record.numOutputs, 2);
    EXPECT_EQ(record.flags, 16);
    EXPECT_EQ(record.ioRatio, 1.0f);
    EXPECT_EQ(record.object, &effect);
    EXPECT_EQ(record.uniqueID, 0x4E6F4566);
    EXPECT_EQ(record.version, 1);
    EXPECT_TRUE(record.dispatcher && record.process && record.setParameter && record.getParameter &&
                record.processReplacing && record.processDoubleReplacing);
    EXPECT_EQ(record.resvd1 | record.resvd2 | record.initialDelay, 0);
    EXPECT_EQ(record.user, nullptr);
    for (const char byte : record.future) EXPECT_EQ(byte, 0);
}

TEST(AudioEffect, AnswersEveryOpcodeByDefault) {
    PlainEffect effect(nullptr);
    for (VstInt32 opcode = 0; opcode < kNumEffectOpcodes; ++opcode) {
        VstIntPtr expected = 0;
        switch (opcode) {
            case effIdentify:
                expected = kEffectIdentify;
                break;
            case effGetCurrentMidiProgram:
                expected = -1;
                break;
            case effGetVstVersion:
                expected = 2400;
                break;
            case effSetTotalSampleToProcess:
                expected = 1;
                break;           // the value
            case effGetProgram:  // set just before
            case effCanBeAutomated:
            case effGetNumProgramCategories:
            case effConnectInput:
            case effConnectOutput:
            case effSetBlockSizeAndSampleRate:
            case effKeysRequired:
                expected = 1;
                break;
            case effSetSpeakerArrangement:
            case effGetSpeakerArrangement:
                continue;  // their value is a pointer
        }
        char buffer[256] = "untouched";
        EXPECT_EQ(effect.dispatcher(opcode, 1, 1, buffer, 1.0f), expected) << opcode;
    }

    auto* input = reinterpret_cast<VstSpeakerArrangement*>(&effect);
    auto* output = input;
    EXPECT_EQ(effect.dispatcher(effGetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&input),
                                &output, 0.0f),
              0);
    EXPECT_EQ(input, nullptr);
    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(effect.dispatcher(effGetSpeakerArrangement, 0, 0, nullptr, 0.0f), 0);

    EXPECT_EQ(effect.getPlugCategory(), kPlugCategUnknown);
    effect.isSynth();
    EXPECT_EQ(effect.getPlugCategory(), kPlugCategSynth);
}

TEST(AudioEffect, KeepsRateAndBlockSizeWithinReason) {
    PlainEffect effect(nullptr);
    EXPECT_EQ(effect.getSampleRate(), 44100.0f);
    EXPECT_EQ(effect.getBlockSize(), 1024);
    effect.setBlockSizeAndSampleRate(64, 96000.0f);
    for (const float refused : {0.0f, -1.0f, float{NAN}, float{INFINITY}}) {
        effect.setBlockSizeAndSampleRate(static_cast<VstInt32>(-1), refused);
        effect.setBlockSize(0);
        EXPECT_EQ(effect.getSampleRate(), 96000.0f);
        EXPECT_EQ(effect.getBlockSize(), 64);
    }
}

TEST(AudioEffect, AdoptsTheHostsRateAndBlockSizeAboveZero) {
    struct {
        VstIntPtr answer;
        float rate;
        VstInt32 blockSize;
    } const rows[] = {{0, 44100.0f, 1024}, {-1, 44100.0f, 1024}, {88200, 88200.0f, 88200}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.answer);
        TestHost host;
        host.answers = {{audioMasterGetSampleRate, row.answer},
                        {audioMasterGetBlockSize, row.answer}};
        PlainEffect effect(TestHost::callback);
        EXPECT_EQ(effect.updateSampleRate(), row.rate);
        EXPECT_EQ(effect.updateBlockSize(), row.blockSize);
    }
}

TEST(AudioEffect, OwnsItsEditor) {
    CallNote note(nullptr);
    auto effect = std::make_unique<PlainEffect>(nullptr);
    auto* const first = new RecordingEditor(effect.get(), note);
    effect->setEditor(first);
    effect->setEditor(first);
    EXPECT_EQ(effect->getEditor(), first);
    EXPECT_TRUE(effect->getAeffect()->flags & effFlagsHasEditor);
    EXPECT_EQ(note.take(), "");
    effect->setEditor(nullptr);
    EXPECT_FALSE(effect->getAeffect()->flags & effFlagsHasEditor);
    EXPECT_EQ(note.take(), "~editor");
    effect->setEditor(new RecordingEditor(effect.get(), note));
    effect.reset();
    EXPECT_EQ(note.take(), "~editor");
}

struct HostCallRow {
    std::function<VstIntPtr(AudioEffectX&)> call;
    VstInt32 opcode;
    VstInt32 index;
    VstIntPtr value;
    bool withBuffer;
    float opt;
    VstIntPtr unanswered;  // the result without a host
};

TEST(AudioEffect, CallsItsHost) {
    using Fx = AudioEffectX;
    char buffer[64];
    auto* const selector = reinterpret_cast<VstFileSelect*>(buffer);
    auto* const events = reinterpret_cast<VstEvents*>(buffer);
    const auto asNumber = [](auto* p) { return reinterpret_cast<VstIntPtr>(p); };
    const HostCallRow rows[] = {
        {[](Fx& e) { return e.getMasterVersion(); }, audioMasterVersion, 0, 0, false, 0, 1},
        {[](Fx& e) { return e.getCurrentUniqueId(); }, audioMasterCurrentId, 0, 0, false, 0, 0},
        {[](Fx& e) { return e.masterIdle(), 1; }, audioMasterIdle, 0, 0, false, 0, 1},
        {[](Fx& e) { return e.wantEvents(), 1; }, audioMasterWantMidi, 0, 1, false, 0, 1},
        {[&](Fx& e) { return asNumber(e.getTimeInfo(kVstTempoValid)); }, audioMasterGetTime, 0,
         1024, false, 0, 0},
        {[&](Fx& e) { return e.sendVstEventsToHost(events); }, audioMasterProcessEvents, 0, 0, true,
         0, 0},
        {[](Fx& e) { return e.ioChanged(); }, audioMasterIOChanged, 0, 0, false, 0, 0},
        {[](Fx& e) { return e.sizeWindow(640, 480); }, audioMasterSizeWindow, 640, 480, false, 0,
         0},
        {[](Fx& e) { return e.getInputLatency(); }, audioMasterGetInputLatency, 0, 0, false, 0, 0},
        {[](Fx& e) { return e.getOutputLatency(); }, audioMasterGetOutputLatency, 0, 0, false, 0,
         0},
        {[](Fx& e) { return e.getCurrentProcessLevel(); }, audioMasterGetCurrentProcessLevel, 0, 0,
         false, 0, 0},
        {[](Fx& e) { return e.getAutomationState(); }, audioMasterGetAutomationState, 0, 0, false,
         0, 0},
        {[&](Fx& e) { return e.getHostVendorString(buffer); }, audioMasterGetVendorString, 0, 0,
         true, 0, 0},
        {[&](Fx& e) { return e.getHostProductString(buffer); }, audioMasterGetProductString, 0, 0,
         true, 0, 0},
        {[](Fx& e) { return e.getHostVendorVersion(); }, audioMasterGetVendorVersion, 0, 0, false,
         0, 0},
        {[&](Fx& e) { return e.hostVendorSpecific(1, 2, buffer, 3.0f); }, audioMasterVendorSpecific,
         1, 2, true, 3, 0},
        {[&](Fx& e) { return e.canHostDo(buffer); }, audioMasterCanDo, 0, 0, true, 0, 0},
        {[](Fx& e) { return e.getHostLanguage(); }, audioMasterGetLanguage, 0, 0, false, 0, 0},
        {[&](Fx& e) { return asNumber(e.getDirectory()); }, audioMasterGetDirectory, 0, 0, false, 0,
         0},
        {[](Fx& e) { return e.updateDisplay(); }, audioMasterUpdateDisplay, 0, 0, false, 0, 0},
        {[](Fx& e) { return e.beginEdit(5); }, audioMasterBeginEdit, 5, 0, false, 0, 0},
        {[](Fx& e) { return e.endEdit(5); }, audioMasterEndEdit, 5, 0, false, 0, 0},
        {[&](Fx& e) { return e.openFileSelector(selector); }, audioMasterOpenFileSelector, 0, 0,
         true, 0, 0},
        {[&](Fx& e) { return e.closeFileSelector(selector); }, audioMasterCloseFileSelector, 0, 0,
         true, 0, 0},
    };
    for (const HostCallRow& row : rows) {
        SCOPED_TRACE(testing::Message() << "host opcode " << row.opcode);
        TestHost host;
        host.answers = {{row.opcode, 1}};
        PlainEffect effect(TestHost::callback);
        EXPECT_EQ(row.call(effect), 1);
        ASSERT_EQ(host.calls.size(), 1u);
        const TestHost::Call& call = host.calls.front();
        EXPECT_EQ(call.effect, effect.getAeffect());
        EXPECT_EQ(call.opcode, row.opcode);
        EXPECT_EQ(call.index, row.index);
        EXPECT_EQ(call.value, row.value);
        EXPECT_EQ(call.ptr, row.withBuffer ? buffer : nullptr);
        EXPECT_EQ(call.opt, row.opt);

        PlainEffect alone(nullptr);
        EXPECT_EQ(row.call(alone), row.unanswered);
    }
}

TEST(AudioEffect, SetsAParameterBeforeItTellsTheHost) {
    struct OrderedEffect : RecordingEffect {
        using RecordingEffect::RecordingEffect;
        void setParameter(VstInt32 index, float value) override {
            RecordingEffect::setParameter(index, value);
            hostCallsBefore = host->calls.size();
        }
        TestHost* host = nullptr;
        size_t hostCallsBefore = 99;
    };
    TestHost host;
    CallNote note(nullptr);
    OrderedEffect effect(TestHost::callback, note);
    effect.host = &host;
    effect.setParameterAutomated(7, 0.25f);
    EXPECT_EQ(note.take(), "setParameter 7 0.25");
    EXPECT_EQ(effect.hostCallsBefore, 0u);
    ASSERT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(host.calls[0].opcode, audioMasterAutomate);
    EXPECT_EQ(host.calls[0].index, 7);
    EXPECT_EQ(host.calls[0].opt, 0.25f);
    EXPECT_EQ(host.calls[0].value, 0);
}

}  // namespace
}  // namespace vst2
