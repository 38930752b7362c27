// What reaches the engine, in which order and how often.
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/played_instrument.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/recording_engine.h"

namespace {

// The calls of the engine, without values.
std::string names(const std::string& calls) {
    std::string kept;
    for (std::size_t i = 0; i < calls.size();) {
        const std::size_t end = std::min(calls.find(' ', i), calls.size());
        kept += (kept.empty() ? "" : " ") + calls.substr(i, std::min(calls.find('=', i), end) - i);
        i = end + 1;
    }
    return kept;
}

constexpr const char* kPush =
    "rate reset phaser-defaults reverb-settings "
    "volume pitch-offset velocity high-pass brightness waveform attack decay sustain release "
    "level:viola level:violin level:brass level:horn level:contrabass level:cello "
    "switch:viola switch:violin switch:brass switch:horn switch:contrabass switch:cello "
    "split violin-phase shared-envelope "
    "chorus slow-depth fast-depth wide stereo dry-add "
    "phaser phaser-rate phaser-feedback phaser-stages phaser-depth "
    "reverb mix size brite spring";

class ToldEngine : public testing::Test {
  protected:
    ToldEngine() {
        auto engine = std::make_unique<RecordingEngine>();
        log = &engine->log;
        instrument = std::make_unique<PlayedInstrument>(std::move(engine), 48000.0);
        started = log->take();
    }
    std::string told(const std::function<void()>& action) {
        action();
        return log->take();
    }
    EngineLog* log;
    std::unique_ptr<PlayedInstrument> instrument;
    std::string started;
};

TEST_F(ToldEngine, HearsOfProgramZeroOnceAndOfEachChangeOnce) {
    instrument::Instrument& i = **instrument;
    EXPECT_EQ(names(started), "rate " + std::string(kPush));
    EXPECT_NE(started.find(" high-pass=0.327 "), std::string::npos);
    EXPECT_EQ(names(told([&] { i.setProgram(5); })), kPush);
    EXPECT_EQ(names(told([&] { i.loadBankChunk(&i.bankChunk(), 26088); })), kPush);
    EXPECT_EQ(names(told([&] { i.loadProgramChunk(&i.programChunk(), 24); })), kPush);
    EXPECT_EQ(told([&] { i.setSampleRate(96000.0); }), "rate=96000");
    EXPECT_EQ(told([&] { i.setSampleRate(5.0); }), "");
    EXPECT_EQ(told([&] { i.setParameter(state::kHP, 0.5f); }), "high-pass=0.5");
    EXPECT_EQ(told([&] { i.setParameter(state::kSpring, 2.0f); }), "spring=1");
    EXPECT_EQ(told([&] { i.setParameter(state::kPan, 0.1f); }), "");
    EXPECT_EQ(told([&] { i.setParameter(state::kVoiceCountParam, 1.0f); }), "polyphony=44");
    for (const int none : {-1, 42, 99998}) {
        EXPECT_EQ(told([&] { i.setParameter(none, 1.0f); }), "") << none;
    }
    for (const int none : {-1, 128}) {
        EXPECT_EQ(told([&] { i.setProgram(none); }), "") << none;
        EXPECT_EQ(i.program(), 5);
    }
    const RecordedMessages messages;
    EXPECT_EQ(told([&] { i.loadProgramChunk(&i.programChunk(), 193); }), "");
    EXPECT_EQ(names(told([&] { i.loadBankChunk(&i.bankChunk(), 26087); })), kPush);
    EXPECT_EQ(messages.all.size(), 2u);
}

TEST_F(ToldEngine, HearsWhatEachMessageMeansOnEveryChannel) {
    const struct {
        int status, data1, data2;
        const char* call;
    } rows[] = {
        {0x80, 60, 64, "note-off=60"},
        {0x80, 0x80 | 60, 0x80, "note-off=60"},
        {0x90, 60, 1, "note-on=60/1"},
        {0x90, 127, 127, "note-on=127/127"},
        {0x90, 60, 0, "note-off=60"},
        {0xA0, 60, 60, ""},
        {0xB0, 11, 127, "expression=1"},
        {0xB0, 11, 32, "expression=0.2519685"},
        {0xB0, 64, 63, "pedal=0"},
        {0xB0, 64, 64, "pedal=1"},
        {0xB0, 120, 0, "all-sound-off"},
        {0xB0, 121, 5, "reset-controllers"},
        {0xB0, 123, 0, "all-notes-off"},
        {0xB0, 0, 9, ""},
        {0xB0, 1, 9, ""},
        {0xB0, 7, 9, ""},
        {0xB0, 122, 9, ""},
        {0xB0, 127, 9, ""},
        {0xD0, 60, 60, ""},
        {0xE0, 0, 127, "bend=127"},
        {0xF0, 60, 60, ""},
        {0x70, 60, 60, ""},
        {0x00, 60, 60, ""},
    };
    for (const auto& row : rows) {
        for (int channel = 0; channel < 16; ++channel) {
            SCOPED_TRACE(testing::Message() << row.status + channel << ' ' << row.data1);
            instrument->send(row.status + channel, row.data1, row.data2);
            instrument->render(1);
            const std::string call = row.call;
            EXPECT_EQ(log->take(), call + (call.empty() ? "" : " ") + "render=1");
        }
    }
}

TEST_F(ToldEngine, HearsKeysOfTheEditorInTheNextBlockAndNoneHangs) {
    instrument::Instrument& i = **instrument;
    instrument->noteOn(48);
    i.playKey(60, 90);
    EXPECT_EQ(log->take(), "");
    instrument->render(32);
    EXPECT_EQ(log->take(), "note-on=48/100 note-on=60/90 render=32");
    i.playKey(62, 90);
    i.resume();  // drops presses, but no release
    i.playKey(60, 0);
    instrument->render(32);
    EXPECT_EQ(log->take(), "note-off=60 render=32");
    for (int press = 0; press < 1000; ++press) i.playKey(64, press % 2 ? 0 : 90);
    instrument->render(32);
    const std::string calls = log->take();
    EXPECT_EQ(calls.substr(calls.size() - 23), "all-notes-off render=32");
}

TEST_F(ToldEngine, HearsMessagesAtTheirFramesAndWhatOthersAskedForBefore) {
    instrument->send(0xC3, 7, 0, 11);
    instrument->noteOn(60);  // at the frame of the previous message
    instrument->send(0xE5, 0, 127, 21);
    std::thread([&] { (*instrument)->setParameter(state::kVolume, 0.5f); }).join();
    instrument->render(32);
    std::string push = names(log->take());
    EXPECT_EQ(push, "volume render " + std::string(kPush) + " note-on render bend render");
    EXPECT_EQ((*instrument)->program(), 7);
    instrument->send(0x90, 60, 100, 200);  // beyond the block
    instrument->render(32);
    instrument->render(32);
    EXPECT_EQ(log->take(), "render=32 render=32");
}

TEST_F(ToldEngine, HearsNothingOfABlockThatCannotBePlayedUntilTheNext) {
    instrument->noteOn(60);
    (*instrument)->render(nullptr, nullptr, 32);
    float sample = 1.0f;
    (*instrument)->render(&sample, nullptr, 1);
    EXPECT_EQ(sample, 0.0f);
    (*instrument)->render(&sample, &sample, 0);
    EXPECT_EQ(log->take(), "");
    instrument->noteOff(60);
    instrument->render(8);
    EXPECT_EQ(log->take(), "note-on=60/100 note-off=60 render=8");
    // Messages for a block that never comes are dropped.
    instrument->noteOn(62);
    (*instrument)->suspend();
    (*instrument)->resume();
    instrument->render(8);
    EXPECT_EQ(log->take(), "render=8");
}

TEST_F(ToldEngine, HearsOfABoundControllerAsItsParameterAlone) {
    const auto control = [&](int controller, int value) {
        instrument->send(0xB2, controller, value);
        instrument->render(1);
        std::string calls = log->take();
        return calls.substr(0, calls.rfind("render") == 0 ? 0 : calls.rfind(" render"));
    };
    (*instrument)->learnSlot().arm(state::kVolume);
    EXPECT_EQ(control(64, 64), "volume=0.503937 pedal=0");
    EXPECT_EQ((*instrument)->learnSlot().armed(), state::LearnSlot::kNone);
    EXPECT_EQ(control(64, 127), "pedal=0 volume=1 pedal=0");
    (*instrument)->learnSlot().arm(state::kSpring);
    EXPECT_EQ(control(123, 127), "spring=1 all-notes-off");
    state::controllerMap().clear();
}

}  // namespace
