// Hosts with unusual call orders and arguments. Whatever they do, the session continues, the output
// is finite, and held notes sound.
#include <cmath>
#include <cstdint>
#include <string>

#ifdef __SSE__
#include <xmmintrin.h>
#endif

#include <gtest/gtest.h>

#include "tests/support/foreign_locale.h"
#include "tests/plugin/vst2/plugin_under_test.h"
#include "tests/support/process_memory.h"

namespace {

class Hosts : public testing::Test {
  protected:
    PluginInstance session(audioMasterCallback host = TestHost::callback) {
        return PluginInstance(library_.entry(), host);
    }

    TestHost host_;
    PluginLibrary library_;
};

VstIntPtr garbage = 0;
VstIntPtr answerGarbage(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) {
    return garbage;
}

TEST_F(Hosts, MayAnswerGarbage) {
    for (const VstIntPtr answer : {VstIntPtr{1}, VstIntPtr{-1}, VstIntPtr{5}, VstIntPtr{1} << 40,
                                   INTPTR_MAX, INTPTR_MIN + 7}) {
        SCOPED_TRACE(answer);
        garbage = answer;
        auto session = this->session(answerGarbage);
        ASSERT_NE(session.record(), nullptr);
        EXPECT_TRUE(session.sounds());
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
    auto session = this->session(askBack);
    session.dispatch(effSetProgram, 0, 7);
    session.mains(true);
    EventList programs({0, 3, 9}, 0xC0);
    session.send(programs);
    EXPECT_TRUE(std::isfinite(session.peak(64)));
    EXPECT_TRUE(session.sounds());
}

TEST_F(Hosts, MaySendAnyEvents) {
    for (const VstInt32 count : {0, -1, INT32_MIN}) {
        auto session = this->session();
        EventList list({0});
        list.setCount(count);
        session.send(list);
        EXPECT_LT(session.listen(), 1e-3f);
        EXPECT_TRUE(session.sounds());
    }
    for (const VstInt32 frame : {-1, INT32_MIN, 63, 64, 65, INT32_MAX}) {
        SCOPED_TRACE(frame);
        auto session = this->session();
        session.set(7, 0.0f);
        EventList list({frame, 5});
        session.send(list);
        const bool within = frame < 65;
        EXPECT_EQ(session.listen() > 1e-3f, within);
        EXPECT_TRUE(session.sounds());
    }
    auto session = this->session();
    EventList other({0, 5});
    other[0].type = kVstSysExType;  // goes with its successor
    session.send(other);
    EXPECT_LT(session.listen(), 1e-3f);
    session.dispatch(effProcessEvents);
    EXPECT_TRUE(session.sounds());
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
            auto session = this->session();
            for (const float hz : {44100.0f, 96000.0f}) {
                session.rate(hz);
                for (const int effect : {26, 32, 37}) {
                    session.set(effect, 1.0f);
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
        auto session = this->session();
        session.set(9, 0.25f);
        const ERect rect = session.rect();
        void* chunk = nullptr;
        const auto size = session.dispatch(effGetChunk, 0, 0, &chunk);
        EXPECT_TRUE(session.sounds());
        return session.text(effGetParamDisplay, 9) + ' ' +
               std::string(static_cast<const char*>(chunk), static_cast<size_t>(size)) +
               std::string(reinterpret_cast<const char*>(&rect), sizeof rect);
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
        PluginInstance instance(library.entry());
        ASSERT_TRUE(instance.sounds());
        instance.rect();
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
