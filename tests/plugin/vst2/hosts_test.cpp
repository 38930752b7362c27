// Hosts with unusual call orders and arguments. Whatever they do, the session continues, the output
// is finite, and held notes sound.
#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <memory>
#include <string>
#include <vector>

#ifdef __SSE__
#include <xmmintrin.h>
#endif

#include <gtest/gtest.h>

#include "tests/plugin/vst2/foreign_locale.h"
#include "tests/plugin/vst2/plugin_under_test.h"
#include "tests/support/process_memory.h"

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr VstInt32 kNoteOn = 0x90;

// An event list in its own memory.
class EventList {
  public:
    EventList(std::initializer_list<VstInt32> frames, VstInt32 status = kNoteOn) {
        list_.count = static_cast<VstInt32>(frames.size());
        for (const VstInt32 frame : frames) {
            VstMidiEvent& midi = midi_[used_];
            midi.type = kVstMidiType;
            midi.byteSize = sizeof midi;
            midi.deltaFrames = frame;
            midi.midiData[0] = static_cast<char>(status);
            midi.midiData[1] = static_cast<char>(60 + used_);
            midi.midiData[2] = 100;
            list_.events[used_++] = reinterpret_cast<VstEvent*>(&midi);
        }
    }
    EventList(const EventList&) = delete;
    EventList& operator=(const EventList&) = delete;

    VstMidiEvent& operator[](int i) { return midi_[i]; }
    void setCount(VstInt32 count) { list_.count = count; }
    void loseEntry(int i) { list_.events[i] = nullptr; }
    void* address() { return &list_; }

  private:
    struct {
        VstInt32 count = 0;
        VstIntPtr reserved = 0;
        VstEvent* events[8] = {};
    } list_;
    VstMidiEvent midi_[8] = {};
    int used_ = 0;
};

// One instance, driven like a host.
class Session : public PluginInstance {
  public:
    explicit Session(const PluginLibrary& library, audioMasterCallback host = TestHost::callback)
        : PluginInstance(library.entry(), host) {}

    void send(EventList& list) { dispatch(effProcessEvents, 0, 0, list.address()); }
    void rate(float hz) { dispatch(effSetSampleRate, 0, 0, nullptr, hz); }
    void mains(bool on) { dispatch(effMainsChanged, 0, on); }

    // Renders a block and returns its peak, or NaN if a sample is NaN.
    float render(VstInt32 frames) {
        std::vector<float> left(std::max(frames, 1), NAN);
        std::vector<float> right = left;
        float* outputs[] = {left.data(), right.data()};
        (*this)->processReplacing(record(), nullptr, outputs, frames);
        float peak = 0.0f;
        for (VstInt32 i = 0; i < frames; ++i) {
            if (!std::isfinite(left[i]) || !std::isfinite(right[i])) return NAN;
            peak = std::max({peak, std::fabs(left[i]), std::fabs(right[i])});
        }
        return peak;
    }
    // Renders frames in blocks of 64 and returns the peak.
    float listen(int frames = 4096) {
        float peak = 0.0f;
        for (; frames > 0; frames -= 64) {
            const float block = render(64);
            if (!std::isfinite(block)) return block;
            peak = std::max(peak, block);
        }
        return peak;
    }
    // Plays a new note. Returns whether it sounds.
    bool sounds(int frames = 4096) {
        (*this)->setParameter(record(), 7, 0.0f);  // attack
        EventList notes({0, 0});
        send(notes);
        return listen(frames) > 1e-3f;
    }
};

class Hosts : public testing::Test {
  protected:
    TestHost host_;
    PluginLibrary library_;
};

// Sends every opcode except those that open a window or a message box, with a buffer where needed.
void askEverything(Session& session) {
    alignas(16) static char buffer[4096];
    for (VstInt32 opcode = 0; opcode < 100; ++opcode) {
        if (opcode == effClose || opcode == effEditOpen || opcode == effSetChunk) continue;
        if (opcode == effGetSpeakerArrangement) continue;  // its value is also an address
        std::memset(buffer, 0, sizeof buffer);
        session.dispatch(opcode, 0, 0, buffer, 0.0f);
    }
}

TEST_F(Hosts, MayCallInAnyOrder) {
    struct {
        const char* name;
        std::vector<VstInt32> opcodes;  // negative: the state of this opcode is switched off
    } const rows[] = {
        {"as usual", {effOpen, effSetSampleRate, effSetBlockSize, effMainsChanged}},
        {"nothing at all", {}},
        {"settings before open", {effSetSampleRate, effSetBlockSize, effMainsChanged, effOpen}},
        {"opened twice", {effOpen, effOpen, effMainsChanged}},
        {"mains in pairs", {effMainsChanged, -effMainsChanged, effMainsChanged}},
        {"on twice", {effOpen, effMainsChanged, effMainsChanged}},
        {"off first", {-effMainsChanged, -effMainsChanged, effOpen}},
        {"rate while on", {effOpen, effMainsChanged, effSetSampleRate, effSetBlockSize}},
        {"both settings at once", {effSetBlockSizeAndSampleRate, effMainsChanged}},
        {"processing started while off", {effStartProcess, effOpen, effStopProcess}},
        {"editor before open", {effEditIdle, effEditGetRect, effEditClose, effOpen, effEditIdle}},
        {"a program while off", {effOpen, -effMainsChanged, effSetProgram, effMainsChanged}},
        {"bypassed", {effOpen, effMainsChanged, effSetBypass, effSetProcessPrecision}},
    };
    for (const bool soundFirst : {false, true}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(row.name);
            Session session(library_);
            EXPECT_TRUE(!soundFirst || session.sounds());
            for (const VstInt32 opcode : row.opcodes) {
                ERect* rect = nullptr;
                session.dispatch(std::abs(opcode), 0, opcode > 0, &rect, 48000.0f);
            }
            EXPECT_TRUE(session.sounds());
        }
    }
}

TEST_F(Hosts, MayOnlyScan) {
    for (int i = 0; i < 5; ++i) {
        Session session(library_);
        if (i % 2) session.dispatch(effOpen);
        askEverything(session);
    }
}

TEST_F(Hosts, MayAskEverythingWhileTheyPlay) {
    Session session(library_);
    EXPECT_TRUE(session.sounds());
    for (int i = 0; i < 3; ++i) {
        askEverything(session);
        session.rate(44100.0f);
        EXPECT_TRUE(session.sounds());
    }
}

VstIntPtr garbage = 0;
VstIntPtr answerGarbage(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) {
    return garbage;
}

TEST_F(Hosts, MayAnswerGarbage) {
    for (const VstIntPtr answer : {VstIntPtr{1}, VstIntPtr{-1}, VstIntPtr{5}, VstIntPtr{1} << 40,
                                   INTPTR_MAX, INTPTR_MIN + 7}) {
        SCOPED_TRACE(answer);
        garbage = answer;
        Session session(library_, answerGarbage);
        ASSERT_NE(session.record(), nullptr);
        EXPECT_TRUE(session.sounds());
        askEverything(session);
        session.dispatch(effSetProgram, 0, 3);
        EXPECT_TRUE(session.sounds());
    }
}

// A host that calls the instance from within each callback.
int depth = 0;
VstIntPtr askBack(AEffect* effect, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
    if (!effect || depth > 1) return kVstVersion;
    ++depth;
    char text[256];
    void* chunk = nullptr;
    const auto ask = [&](VstInt32 what, VstInt32 index, void* ptr) {
        return effect->dispatcher(effect, what, index, 0, ptr, 0.0f);
    };
    ask(effGetProgramName, 0, text);
    ask(effGetParamDisplay, 5, text);
    ask(effEditIdle, 0, nullptr);
    EXPECT_EQ(ask(effGetChunk, 0, &chunk), 26088);
    EXPECT_TRUE(std::isfinite(effect->getParameter(effect, 0)));
    if (opcode == audioMasterUpdateDisplay) ask(effSetProgram, 0, nullptr);
    --depth;
    return opcode == audioMasterGetSampleRate ? 48000 : 1;
}

TEST_F(Hosts, MayAskBackFromTheirCallback) {
    Session session(library_, askBack);
    session.dispatch(effSetProgram, 0, 7);
    session.mains(true);
    EventList programs({0, 3, 9}, 0xC0);
    session.send(programs);
    EXPECT_TRUE(std::isfinite(session.render(64)));
    EXPECT_TRUE(session.sounds());
}

TEST_F(Hosts, MayRenderAnyNumberOfFrames) {
    Session session(library_);
    session.dispatch(effSetBlockSize, 0, 128);
    for (const VstInt32 frames : {256, 0, 1, 17, -1, 128, INT32_MIN, 16384, 1, 65536}) {
        SCOPED_TRACE(frames);
        EventList notes({0});
        session.send(notes);
        const float peak = session.render(frames);
        EXPECT_TRUE(std::isfinite(peak));
        EXPECT_TRUE(session.sounds());
    }
    for (const VstIntPtr size : {VstIntPtr{0}, VstIntPtr{-1}, INTPTR_MAX, INTPTR_MIN}) {
        session.dispatch(effSetBlockSize, 0, size);
        EXPECT_TRUE(session.sounds());
    }
}

// Events of a block without frames or without buffers play in the next block.
TEST_F(Hosts, MayRenderNothingWithoutLosingANote) {
    for (int missing = 0; missing < 5; ++missing) {
        SCOPED_TRACE(missing);
        Session session(library_);
        session->setParameter(session.record(), 7, 0.0f);
        std::vector<float> left(64, NAN), right(64, NAN);
        float* outputs[] = {missing == 1 ? nullptr : left.data(),
                            missing == 2 ? nullptr : right.data()};
        if (missing == 3) outputs[0] = outputs[1] = nullptr;
        {
            EventList notes({0, 20});
            session.send(notes);
            session->processReplacing(session.record(), nullptr, missing == 4 ? nullptr : outputs,
                                      missing == 0 ? 0 : 64);
        }
        // If only one channel is given, it is silenced, not left as it was.
        const std::vector<float> silence(64, 0.0f);
        EXPECT_TRUE(missing != 2 || left == silence);
        EXPECT_TRUE(missing != 1 || right == silence);
        EXPECT_GT(session.listen(), 1e-3f);
    }
}

TEST_F(Hosts, MaySetAnyRate) {
    Session session(library_);
    for (const float hz : {8000.0f,   8000.25f,   11025.0f,   22050.0f,  44099.5f,  44100.0f,
                           48000.0f,  88200.0f,   96000.125f, 176400.0f, 192000.0f, 384000.0f,
                           767999.5f, 768000.0f,  0.0f,       -0.0f,     -44100.0f, NAN,
                           kInfinity, -kInfinity, 1e30f,      1e-30f,    1.0f,      768001.0f}) {
        SCOPED_TRACE(hz);
        session.rate(hz);
        EXPECT_TRUE(session.sounds(1 << 15));
        session.mains(false);
        session.rate(hz);
        session.mains(true);
        EXPECT_TRUE(session.sounds(1 << 15));
    }
}

TEST_F(Hosts, MaySendAnyEvents) {
    for (const VstInt32 count : {0, -1, INT32_MIN}) {
        Session session(library_);
        EventList list({0});
        list.setCount(count);
        session.send(list);
        EXPECT_LT(session.listen(), 1e-3f);
        EXPECT_TRUE(session.sounds());
    }
    for (const VstInt32 frame : {-1, INT32_MIN, 63, 64, 65, INT32_MAX}) {
        SCOPED_TRACE(frame);
        Session session(library_);
        session->setParameter(session.record(), 7, 0.0f);
        EventList list({frame, 5});
        session.send(list);
        const bool within = frame < 65;
        EXPECT_EQ(session.listen() > 1e-3f, within);
        EXPECT_TRUE(session.sounds());
    }
    Session session(library_);
    EventList list({0, 0, 0, 0, 0, 0});
    list.loseEntry(0);
    list.loseEntry(2);
    list.loseEntry(5);
    list[3].type = kVstSysExType;
    list[4].byteSize = -1;
    list[4].noteLength = list[4].noteOffset = INT32_MIN;
    session.send(list);
    EXPECT_TRUE(std::isfinite(session.listen()));
    EXPECT_TRUE(session.sounds());
    session.dispatch(effProcessEvents);
    EXPECT_TRUE(session.sounds());
}

// Events sent while the mains are off are dropped, because their memory may be gone.
TEST_F(Hosts, MaySendEventsWhileTheMainsAreOff) {
    Session session(library_);
    session.mains(true);
    session.render(64);
    for (const bool backOn : {true, false}) {
        {
            const auto list = std::make_unique<EventList>(std::initializer_list<VstInt32>{0, 9});
            if (backOn) session.mains(false);
            session.send(*list);
            session.mains(backOn);
        }
        EXPECT_TRUE(std::isfinite(session.render(64)));
    }
    EXPECT_TRUE(session.sounds());
}

TEST_F(Hosts, MayNameAnyParameterAndProgram) {
    Session session(library_);
    for (const VstInt32 index :
         {INT32_MIN, -1, 42, 43, 127, 128, 99998, 99999, 100000, INT32_MAX}) {
        SCOPED_TRACE(index);
        char text[256] = {};
        for (const VstInt32 opcode :
             {effGetParamName, effGetParamDisplay, effGetParamLabel, effString2Parameter,
              effGetParameterProperties, effGetProgramNameIndexed, effCopyProgram,
              effGetMidiKeyName}) {
            session.dispatch(opcode, index, index, text);
        }
        session.dispatch(effSetProgram, 0, index);
        for (const float value : {-1.0f, 1e30f, -kInfinity, NAN, 0.5f}) {
            session->setParameter(session.record(), index, value);
        }
        EXPECT_TRUE(std::isfinite(session->getParameter(session.record(), index)));
        EXPECT_TRUE(session.sounds());
    }
    EXPECT_TRUE(std::isfinite(session.listen()));
}

#ifdef __SSE__
// The host's floating-point modes (flushing, rounding, trapping) do not change.
TEST_F(Hosts, MaySetTheProcessorsModes) {
    constexpr unsigned kStatus = 0x3F;
    constexpr unsigned kUsual = 0x1F80;
    constexpr unsigned kTraps =
        kUsual & ~(_MM_MASK_INVALID | _MM_MASK_DIV_ZERO | _MM_MASK_OVERFLOW);
    for (const unsigned mode : {kUsual, kUsual | 0x8040u, kUsual | unsigned{_MM_ROUND_DOWN},
                                kUsual | unsigned{_MM_ROUND_TOWARD_ZERO}, kTraps}) {
        SCOPED_TRACE(mode);
        const unsigned before = _mm_getcsr();
        _mm_setcsr(mode);
        bool sounded = true;
        {
            Session session(library_);
            for (const float hz : {44100.0f, 96000.0f}) {
                session.rate(hz);
                for (const int effect : {26, 32, 37}) {
                    session->setParameter(session.record(), effect, 1.0f);
                }
                sounded &= session.sounds();
            }
            session.dispatch(effSetProgram, 0, 1);
            EventList off({0}, 0xB0);
            off[0].midiData[1] = 123;
            session.send(off);
            sounded &= session.listen(1 << 16) < 16.0f;  // through all tails to sleep
            sounded &= session.sounds();
        }
        const unsigned after = _mm_getcsr();
        _mm_setcsr(before);
        EXPECT_TRUE(sounded);
        EXPECT_EQ(after & ~kStatus, mode);
    }
}
#endif

TEST_F(Hosts, MayCountWithCommas) {
    const auto answers = [this] {
        Session session(library_);
        session->setParameter(session.record(), 9, 0.25f);
        char display[64] = {};
        ERect* rect = nullptr;
        void* chunk = nullptr;
        session.dispatch(effGetParamDisplay, 9, 0, display);
        session.dispatch(effEditGetRect, 0, 0, &rect);
        const auto size = session.dispatch(effGetChunk, 0, 0, &chunk);
        std::string all = display;
        all += ' ' + std::string(static_cast<const char*>(chunk), static_cast<size_t>(size));
        if (rect) all.append(reinterpret_cast<const char*>(rect), sizeof *rect);
        EXPECT_TRUE(session.sounds());
        return all;
    };
    const std::string plain = answers();
    EXPECT_EQ(plain.substr(0, 6), "0.250 ");
    {
        const ForeignLocale locale;
        EXPECT_EQ(answers(), plain);
        EXPECT_TRUE(locale.stands());
        if (!locale.ofTheCLibrary()) GTEST_SKIP() << "no locale with commas could be made";
    }
}

TEST(HostsOfManySessions, FindTheirMemoryFlat) {
    const auto session = [] {
        TestHost host;
        const PluginLibrary library;
        Session instance(library);
        ASSERT_TRUE(instance.sounds());
        ERect* rect = nullptr;
        instance.dispatch(effEditGetRect, 0, 0, &rect);
        instance.dispatch(effEditIdle);
    };
#ifdef __SANITIZE_ADDRESS__
    constexpr int kSessions = 20;  // which loads libraries ten times as slowly
#else
    constexpr int kSessions = 100;
#endif
    for (int i = 0; i < 10; ++i) session();
    const ProcessMemory before = ProcessMemory::now();
    for (int i = 0; i < kSessions; ++i) session();
    const ProcessMemory after = ProcessMemory::now();
    EXPECT_LE(after.bytes, before.bytes + kProcessMemoryNoise);
    EXPECT_EQ(after.handles, before.handles);
    EXPECT_EQ(after.mappedFiles, before.mappedFiles);
}

}  // namespace
