// The base classes: the answer to each opcode, the calls to the host.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <new>
#include <string>

#include "plugin/vst2/audio_effect_x.h"
#include "tests/plugin/vst2/test_host.h"

namespace vst2 {
namespace {

// Overrides only the pure virtual function.
class PlainEffect : public AudioEffectX {
  public:
    explicit PlainEffect(audioMasterCallback host = nullptr) : AudioEffectX(host, 128, 42) {}
    void processReplacing(float**, float**, VstInt32) override {}
};

TEST(Dispatcher, AnswersEveryOpcodeByDefault) {
    PlainEffect effect;
    const std::map<VstInt32, VstIntPtr> others = {{effIdentify, kEffectIdentify},
                                                  {effGetCurrentMidiProgram, -1},
                                                  {effGetVstVersion, 2400},
                                                  {effSetTotalSampleToProcess, 1},
                                                  {effGetProgram, 1},  // set just before
                                                  {effCanBeAutomated, 1},
                                                  {effGetNumProgramCategories, 1},
                                                  {effConnectInput, 1},
                                                  {effConnectOutput, 1},
                                                  {effSetBlockSizeAndSampleRate, 1},
                                                  {effKeysRequired, 1}};
    for (VstInt32 opcode = -1; opcode <= kNumEffectOpcodes; ++opcode) {
        if (opcode == effSetSpeakerArrangement || opcode == effGetSpeakerArrangement) continue;
        char buffer[256] = "untouched";
        const auto found = others.find(opcode);
        EXPECT_EQ(effect.dispatcher(opcode, 1, 1, buffer, 1.0f),
                  found == others.end() ? 0 : found->second)
            << opcode;
    }
    EXPECT_EQ(effect.getBlockSize(), 1);
    effect.dispatcher(effSetBlockSize, 0, VstIntPtr{1} << 32, nullptr, 0.0f);
    EXPECT_EQ(effect.getBlockSize(), INT32_MAX);

    // Their value is a pointer.
    VstSpeakerArrangement *input = reinterpret_cast<VstSpeakerArrangement*>(&effect),
                          *output = input;
    const auto value = reinterpret_cast<VstIntPtr>(&input);
    EXPECT_EQ(effect.dispatcher(effSetSpeakerArrangement, 0, 0, nullptr, 0.0f), 0);
    EXPECT_EQ(effect.dispatcher(effGetSpeakerArrangement, 0, value, &output, 0.0f), 0);
    EXPECT_TRUE(!input && !output);
    EXPECT_EQ(effect.dispatcher(effGetSpeakerArrangement, 0, 0, nullptr, 0.0f), 0);
}

TEST(AudioEffect, KeepsRateAndBlockSizeWithinReason) {
    const struct {
        VstIntPtr answer;  // of the host
        float rate;
        VstInt32 blockSize;
    } rows[] = {{0, 44100.0f, 1024}, {-1, 44100.0f, 1024}, {88200, 88200.0f, 88200}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.answer);
        TestHost host;
        host.answers = {{audioMasterGetSampleRate, row.answer},
                        {audioMasterGetBlockSize, row.answer}};
        PlainEffect effect(TestHost::callback);
        EXPECT_EQ(effect.updateSampleRate(), row.rate);
        EXPECT_EQ(effect.updateBlockSize(), row.blockSize);
        for (const float refused : {0.0f, -1.0f, float{NAN}, float{INFINITY}}) {
            effect.setBlockSizeAndSampleRate(-1, refused);
            effect.setBlockSize(0);
            EXPECT_EQ(effect.getSampleRate(), row.rate);
            EXPECT_EQ(effect.getBlockSize(), row.blockSize);
        }
    }
}

struct HostCallRow {
    std::function<VstIntPtr(AudioEffectX&)> call;
    VstInt32 opcode;
    VstInt32 index = 0;
    VstIntPtr value = 0;
    float opt = 0;
    VstIntPtr unanswered = 0;  // the result without a host
    bool withBuffer = false;
};

TEST(AudioEffect, CallsItsHost) {
    using Fx = AudioEffectX;
    char text[64];
    auto* const file = reinterpret_cast<VstFileSelect*>(text);
    auto* const events = reinterpret_cast<VstEvents*>(text);
    const auto asNumber = [](auto* p) { return reinterpret_cast<VstIntPtr>(p); };
    const auto set = [](Fx& e) { return e.setParameterAutomated(7, 0.25f), 1; };
    HostCallRow rows[] = {
        {[](Fx& e) { return e.getMasterVersion(); }, audioMasterVersion, 0, 0, 0, 1},
        {[](Fx& e) { return e.getCurrentUniqueId(); }, audioMasterCurrentId},
        {[](Fx& e) { return e.masterIdle(), 1; }, audioMasterIdle, 0, 0, 0, 1},
        {[](Fx& e) { return e.wantEvents(), 1; }, audioMasterWantMidi, 0, 1, 0, 1},
        {[&](Fx& e) { return asNumber(e.getTimeInfo(1024)); }, audioMasterGetTime, 0, 1024},
        {[](Fx& e) { return e.ioChanged(); }, audioMasterIOChanged},
        {[](Fx& e) { return e.sizeWindow(640, 480); }, audioMasterSizeWindow, 640, 480},
        {[](Fx& e) { return e.getInputLatency(); }, audioMasterGetInputLatency},
        {[](Fx& e) { return e.getOutputLatency(); }, audioMasterGetOutputLatency},
        {[](Fx& e) { return e.getCurrentProcessLevel(); }, audioMasterGetCurrentProcessLevel},
        {[](Fx& e) { return e.getAutomationState(); }, audioMasterGetAutomationState},
        {[](Fx& e) { return e.getHostVendorVersion(); }, audioMasterGetVendorVersion},
        {[](Fx& e) { return e.getHostLanguage(); }, audioMasterGetLanguage},
        {[&](Fx& e) { return asNumber(e.getDirectory()); }, audioMasterGetDirectory},
        {[](Fx& e) { return e.updateDisplay(); }, audioMasterUpdateDisplay},
        {[](Fx& e) { return e.beginEdit(5); }, audioMasterBeginEdit, 5},
        {[](Fx& e) { return e.endEdit(5); }, audioMasterEndEdit, 5},
        {set, audioMasterAutomate, 7, 0, 0.25f, 1},
        // With the buffer.
        {[&](Fx& e) { return e.hostVendorSpecific(1, 2, text, 3); }, audioMasterVendorSpecific, 1,
         2, 3},
        {[&](Fx& e) { return e.sendVstEventsToHost(events); }, audioMasterProcessEvents},
        {[&](Fx& e) { return e.getHostVendorString(text); }, audioMasterGetVendorString},
        {[&](Fx& e) { return e.getHostProductString(text); }, audioMasterGetProductString},
        {[&](Fx& e) { return e.canHostDo(text); }, audioMasterCanDo},
        {[&](Fx& e) { return e.openFileSelector(file); }, audioMasterOpenFileSelector},
        {[&](Fx& e) { return e.closeFileSelector(file); }, audioMasterCloseFileSelector},
    };
    for (HostCallRow* row = std::end(rows) - 7; row != std::end(rows); ++row) {
        row->withBuffer = true;
    }
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
        EXPECT_EQ(call.ptr, row.withBuffer ? text : nullptr);
        EXPECT_EQ(call.opt, row.opt);

        PlainEffect alone;
        EXPECT_EQ(row.call(alone), row.unanswered);
    }
}

// Writes its end, and its editor's, into a text. Fails to open and to close.
struct NotedEffect : PlainEffect {
    explicit NotedEffect(std::string& note) : note(note) { setEditor(new Editor(*this)); }
    ~NotedEffect() override { note += "~effect "; }
    void open() override { throw std::bad_alloc(); }
    void close() override {
        note += "close ";
        throw std::bad_alloc();
    }
    struct Editor : AEffEditor {
        explicit Editor(NotedEffect& effect) : AEffEditor(&effect), note(effect.note) {}
        ~Editor() override { note += "~editor "; }
        void close() override { note += "editor.close "; }
        std::string& note;
    };
    std::string& note;
};

TEST(Record, ClosesAnOpenEditorAndKeepsExceptionsFromTheHost) {
    for (const bool isOpen : {false, true}) {
        std::string note;
        AEffect* const record = (new NotedEffect(note))->getAeffect();
        EXPECT_TRUE(record->flags & effFlagsHasEditor);
        ERect* rect = nullptr;
        EXPECT_EQ(record->dispatcher(record, effOpen, 0, 0, nullptr, 0.0f), 0);
        EXPECT_EQ(record->dispatcher(record, effEditGetRect, 0, 0, &rect, 0.0f), 0);
        if (isOpen) record->dispatcher(record, effEditOpen, 0, 0, &note, 0.0f);
        EXPECT_EQ(record->dispatcher(record, effClose, 0, 0, nullptr, 0.0f), 1);
        EXPECT_EQ(note, std::string(isOpen ? "editor.close " : "") + "close ~effect ~editor ");
    }
}

TEST(Record, AnswersNothingWithoutAnInstance) {
    PlainEffect effect;
    AEffect orphan = *effect.getAeffect();
    orphan.object = nullptr;
    for (AEffect* const record : {static_cast<AEffect*>(nullptr), &orphan}) {
        EXPECT_EQ(orphan.dispatcher(record, effGetVstVersion, 0, 0, nullptr, 0.0f), 0);
        EXPECT_EQ(orphan.dispatcher(record, effClose, 0, 0, nullptr, 0.0f), 0);
        EXPECT_EQ(orphan.getParameter(record, 0), 0.0f);
        orphan.setParameter(record, 0, 1.0f);
        orphan.processReplacing(record, nullptr, nullptr, 0);
        orphan.process(record, nullptr, nullptr, 0);
        orphan.processDoubleReplacing(record, nullptr, nullptr, 0);
    }
}

}  // namespace
}  // namespace vst2
