// Each opcode calls its operation with the host's arguments and returns the answer.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <new>

#include "tests/plugin/vst2/recording_effect.h"

namespace vst2 {
namespace {

struct Row {
    VstInt32 opcode;
    VstInt32 index;
    VstIntPtr value;
    bool withBuffer;
    float opt;
    const char* reached;
    VstIntPtr answer;
};

constexpr VstIntPtr kHuge = VstIntPtr{1} << 32;

constexpr Row kRows[] = {
    // opcode, index, value, buffer, opt, operation called, answer
    {effOpen, 0, 0, false, 0, "open", 0},
    {effSetProgram, 0, 127, false, 0, "setProgram 127", 0},
    {effSetProgram, 0, 128, false, 0, "", 0},
    {effSetProgram, 0, -1, false, 0, "", 0},
    {effSetProgram, 0, kHuge, false, 0, "", 0},
    {effGetProgram, 0, 0, false, 0, "getProgram", 7},
    {effSetProgramName, 0, 0, true, 0, "setProgramName buffer", 0},
    {effGetProgramName, 0, 0, true, 0, "getProgramName buffer", 0},
    {effGetParamLabel, 3, 0, true, 0, "getParameterLabel 3 buffer", 0},
    {effGetParamDisplay, 3, 0, true, 0, "getParameterDisplay 3 buffer", 0},
    {effGetParamName, 3, 0, true, 0, "getParameterName 3 buffer", 0},
    {effGetVu, 0, 0, false, 0, "getVu", 16383},
    {effSetSampleRate, 0, 0, false, 48000, "setSampleRate 48000", 0},
    {effSetBlockSize, 0, 256, false, 0, "setBlockSize 256", 0},
    {effSetBlockSize, 0, kHuge, false, 0, "setBlockSize 2147483647", 0},
    {effMainsChanged, 0, 0, false, 0, "suspend", 0},
    {effMainsChanged, 0, 1, false, 0, "resume", 0},
    {effMainsChanged, 0, kHuge, false, 0, "resume", 0},
    {effEditGetRect, 0, 0, true, 0, "getRect buffer", 1},
    {effEditOpen, 0, 0, true, 0, "editor.open buffer", 1},
    {effEditClose, 0, 0, false, 0, "editor.close", 0},
    {effEditDraw, 0, 0, true, 0, "", 0},
    {effEditMouse, 1, 2, true, 0, "", 0},
    {effEditKey, 0, 65, false, 0, "", 0},
    {effEditIdle, 0, 0, false, 0, "idle", 0},
    {effEditTop, 0, 0, false, 0, "", 0},
    {effEditSleep, 0, 0, false, 0, "", 0},
    {effIdentify, 0, 0, false, 0, "", 0x4E764566},
    {effGetChunk, 0, 0, true, 0, "getChunk buffer 0", 7},
    {effGetChunk, 2, 0, true, 0, "getChunk buffer 1", 7},
    {effSetChunk, 0, 192, true, 0, "setChunk buffer 192 0", 7},
    {effSetChunk, 1, kHuge + 192, true, 0, "setChunk buffer 2147483647 1", 7},
    {effProcessEvents, 0, 0, true, 0, "processEvents buffer", 7},
    {effCanBeAutomated, 5, 0, false, 0, "canParameterBeAutomated 5", 0},
    {effString2Parameter, 5, 0, true, 0, "string2parameter 5 buffer", 1},
    {effString2Parameter, 5, 0, false, 0, "string2parameter 5 null", 1},
    {effGetNumProgramCategories, 0, 0, false, 0, "getNumCategories", 7},
    {effGetProgramNameIndexed, 4, -1, true, 0, "getProgramNameIndexed -1 4 buffer", 1},
    {effCopyProgram, 9, 0, false, 0, "copyProgram 9", 1},
    {effConnectInput, 1, 1, false, 0, "inputConnected 1 1", 1},
    {effConnectOutput, 1, 0, false, 0, "outputConnected 1 0", 1},
    {effGetInputProperties, 1, 0, true, 0, "getInputProperties 1 buffer", 1},
    {effGetOutputProperties, 1, 0, true, 0, "getOutputProperties 1 buffer", 1},
    {effGetPlugCategory, 0, 0, false, 0, "getPlugCategory", 7},
    {effGetCurrentPosition, 0, 0, false, 0, "reportCurrentPosition", 7},
    {effGetDestinationBuffer, 0, 0, false, 0, "reportDestinationBuffer", 7},
    {effOfflineNotify, 1, 3, true, 0, "offlineNotify buffer 3 1", 1},
    {effOfflinePrepare, 0, 3, true, 0, "offlinePrepare buffer 3", 1},
    {effOfflineRun, 0, 3, true, 0, "offlineRun buffer 3", 1},
    {effProcessVarIo, 0, 0, true, 0, "processVariableIo buffer", 1},
    {effSetSpeakerArrangement, 0, 8, true, 0, "setSpeakerArrangement other buffer", 1},
    {effSetSpeakerArrangement, 0, 0, false, 0, "setSpeakerArrangement null null", 1},
    {effSetBlockSizeAndSampleRate, 0, 64, false, 96000, "setBlockSizeAndSampleRate 64 96000", 1},
    {effSetBypass, 0, 1, false, 0, "setBypass 1", 1},
    {effGetEffectName, 0, 0, true, 0, "getEffectName buffer", 1},
    {effGetErrorText, 0, 0, true, 0, "getErrorText buffer", 1},
    {effGetVendorString, 0, 0, true, 0, "getVendorString buffer", 1},
    {effGetProductString, 0, 0, true, 0, "getProductString buffer", 1},
    {effGetVendorVersion, 0, 0, false, 0, "getVendorVersion", 7},
    {effVendorSpecific, 1, 2, true, 0.5f, "vendorSpecific 1 2 buffer 0.5", 7},
    {effVendorSpecific, 1, kHuge, false, 0, "vendorSpecific 1 4294967296 null 0", 7},
    {effCanDo, 0, 0, true, 0, "canDo buffer", 7},
    {effGetTailSize, 0, 0, false, 0, "getGetTailSize", 7},
    {effIdle, 0, 0, false, 0, "fxIdle", 7},
    {effGetIcon, 0, 0, false, 0, "getIcon", 7},
    {effSetViewPosition, 10, 20, false, 0, "setViewPosition 10 20", 1},
    {effGetParameterProperties, 6, 0, true, 0, "getParameterProperties 6 buffer", 1},
    {effKeysRequired, 0, 0, false, 0, "keysRequired", 0},
    {effGetVstVersion, 0, 0, false, 0, "getVstVersion", 7},
    {effEditKeyDown, 65, 4, false, 3, "onKeyDown 65 4 3", 1},
    {effEditKeyDown, 65, 4, false, -3, "onKeyDown 65 4 0", 1},
    {effEditKeyUp, 65, 4, false, 8, "onKeyUp 65 4 8", 1},
    {effEditKeyUp, 65, 4, false, NAN, "onKeyUp 65 4 0", 1},
    {effSetEditKnobMode, 0, 2, false, 0, "setKnobMode 2", 1},
    {effGetMidiProgramName, 1, 0, true, 0, "getMidiProgramName 1 buffer", 7},
    {effGetCurrentMidiProgram, 1, 0, true, 0, "getCurrentMidiProgram 1 buffer", 7},
    {effGetMidiProgramCategory, 1, 0, true, 0, "getMidiProgramCategory 1 buffer", 7},
    {effHasMidiProgramsChanged, 1, 0, false, 0, "hasMidiProgramsChanged 1", 1},
    {effGetMidiKeyName, 1, 0, true, 0, "getMidiKeyName 1 buffer", 1},
    {effBeginSetProgram, 0, 0, false, 0, "beginSetProgram", 1},
    {effEndSetProgram, 0, 0, false, 0, "endSetProgram", 1},
    {effGetSpeakerArrangement, 0, 8, true, 0, "getSpeakerArrangement other buffer", 1},
    {effShellGetNextPlugin, 0, 0, true, 0, "getNextShellPlugin buffer", 7},
    {effStartProcess, 0, 0, false, 0, "startProcess", 7},
    {effStopProcess, 0, 0, false, 0, "stopProcess", 7},
    {effSetTotalSampleToProcess, 0, 512, false, 0, "setTotalSampleToProcess 512", 7},
    {effSetPanLaw, 0, 1, false, 0.75f, "setPanLaw 1 0.75", 1},
    {effBeginLoadBank, 0, 0, true, 0, "beginLoadBank buffer", 7},
    {effBeginLoadProgram, 0, 0, true, 0, "beginLoadProgram buffer", 7},
    {effSetProcessPrecision, 0, 1, false, 0, "setProcessPrecision 1", 1},
    {effGetNumMidiInputChannels, 0, 0, false, 0, "getNumMidiInputChannels", 7},
    {effGetNumMidiOutputChannels, 0, 0, false, 0, "getNumMidiOutputChannels", 7},
    {kNumEffectOpcodes, 0, 0, true, 0, "", 0},
    {-1, 0, 0, true, 0, "", 0},
    {INT32_MIN, 0, 0, true, 0, "", 0},
    {INT32_MAX, 0, 0, true, 0, "", 0},
};

class Dispatcher : public testing::Test {
  protected:
    VstIntPtr dispatch(const Row& row) {
        return record_->dispatcher(record_, row.opcode, row.index, row.value,
                                   row.withBuffer ? buffer_ : nullptr, row.opt);
    }
    ~Dispatcher() override { record_->dispatcher(record_, effClose, 0, 0, nullptr, 0.0f); }

    void* buffer_[64] = {};
    CallNote note_{buffer_};
    RecordingEffect* effect_ = new RecordingEffect(nullptr, note_);
    AEffect* record_ = effect_->getAeffect();
};

TEST_F(Dispatcher, LeadsEachOpcodeToItsOperation) {
    effect_->setEditor(new RecordingEditor(effect_, note_));
    bool covered[kNumEffectOpcodes] = {};
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::Message() << "opcode " << row.opcode << ", " << row.reached);
        EXPECT_EQ(dispatch(row), row.answer);
        EXPECT_EQ(note_.take(), row.reached);
        if (row.opcode >= 0 && row.opcode < kNumEffectOpcodes) covered[row.opcode] = true;
    }
    covered[effClose] = true;  // has its own test
    for (int opcode = 0; opcode < kNumEffectOpcodes; ++opcode) {
        EXPECT_TRUE(covered[opcode]) << "opcode " << opcode;
    }
}

TEST_F(Dispatcher, TurnsAwayNullPointersWhereAnOperationNeedsOne) {
    effect_->setEditor(new RecordingEditor(effect_, note_));
    for (const Row& row : kRows) {
        const bool takesNull = row.opcode == effEditOpen || row.opcode == effString2Parameter ||
                               row.opcode == effVendorSpecific ||
                               row.opcode == effSetSpeakerArrangement ||
                               row.opcode == effGetSpeakerArrangement;
        if (!row.withBuffer || takesNull) continue;
        SCOPED_TRACE(testing::Message() << "opcode " << row.opcode << ", " << row.reached);
        Row withNull = row;
        withNull.withBuffer = false;
        EXPECT_EQ(dispatch(withNull), 0);
        EXPECT_EQ(note_.take(), "");
    }
}

TEST_F(Dispatcher, AnswersEditorOpcodesWithoutAnEditor) {
    for (const VstInt32 opcode : {effEditGetRect, effEditOpen, effEditClose, effEditIdle,
                                  effEditKeyDown, effEditKeyUp, effSetEditKnobMode}) {
        EXPECT_EQ(dispatch({opcode, 0, 0, true, 0, "", 0}), 0) << opcode;
    }
}

TEST(Record, ForwardsItsEntryPointsToTheInstance) {
    float* channels[2] = {};
    CallNote note(channels);
    RecordingEffect effect(nullptr, note);
    AEffect* const record = effect.getAeffect();
    auto** const doubles = reinterpret_cast<double**>(channels);

    record->process(record, nullptr, channels, 16);
    EXPECT_EQ(note.take(), "process null buffer 16");
    record->processReplacing(record, channels, nullptr, 17);
    EXPECT_EQ(note.take(), "processReplacing buffer null 17");
    record->processDoubleReplacing(record, doubles, doubles, 18);
    EXPECT_EQ(note.take(), "processDoubleReplacing buffer buffer 18");
    record->setParameter(record, 99999, 0.25f);
    EXPECT_EQ(note.take(), "setParameter 99999 0.25");
    EXPECT_EQ(record->getParameter(record, 42), 3.5f);
    EXPECT_EQ(note.take(), "getParameter 42");
}

TEST(Record, LosesItsInstanceAndAnOpenEditorOnClose) {
    CallNote note(nullptr);
    auto* const effect = new RecordingEffect(nullptr, note);
    AEffect* const record = effect->getAeffect();
    auto* const editor = new RecordingEditor(effect, note);
    effect->setEditor(editor);
    editor->open(&note);
    note.take();
    EXPECT_EQ(record->dispatcher(record, effClose, 0, 0, nullptr, 0.0f), 1);
    EXPECT_EQ(note.take(), "editor.close; close; ~effect; ~editor");
}

TEST(Record, KeepsExceptionsFromTheHost) {
    struct ThrowingEffect : RecordingEffect {
        using RecordingEffect::RecordingEffect;
        void open() override { throw std::bad_alloc(); }
        void close() override { throw std::bad_alloc(); }
    };
    CallNote note(nullptr);
    AEffect* const record = (new ThrowingEffect(nullptr, note))->getAeffect();
    EXPECT_EQ(record->dispatcher(record, effOpen, 0, 0, nullptr, 0.0f), 0);
    EXPECT_EQ(record->dispatcher(record, effClose, 0, 0, nullptr, 0.0f), 1);
    EXPECT_EQ(note.take(), "~effect");
}

TEST(Record, AnswersNothingWithoutAnInstance) {
    CallNote note(nullptr);
    RecordingEffect effect(nullptr, note);
    AEffect orphan = *effect.getAeffect();
    orphan.object = nullptr;
    for (AEffect* const record : {static_cast<AEffect*>(nullptr), &orphan}) {
        EXPECT_EQ(orphan.dispatcher(record, effGetProgram, 0, 0, nullptr, 0.0f), 0);
        EXPECT_EQ(orphan.dispatcher(record, effClose, 0, 0, nullptr, 0.0f), 0);
        EXPECT_EQ(orphan.getParameter(record, 0), 0.0f);
        orphan.setParameter(record, 0, 1.0f);
        orphan.processReplacing(record, nullptr, nullptr, 0);
        EXPECT_EQ(note.take(), "");
    }
}

}  // namespace
}  // namespace vst2
