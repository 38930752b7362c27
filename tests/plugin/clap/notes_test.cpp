// What the shell makes of notes, and when it sleeps.
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "tests/plugin/clap/clap_test.h"

namespace {

using namespace clap_driver;

// Notes, wildcards, expressions and MIDI without rhyme or reason, of both dialects mixed, in any
// order of their times.
TEST_F(Clap, PlaysAnythingAtAnyRateAndSize) {
    const auto any = [this](int most) { return static_cast<int16_t>(upTo(most + 1) - 1); };
    Instance instance(host_);
    for (const double rate : {0.0, -1.0, 999.0, 1e6, static_cast<double>(NAN)}) {
        EXPECT_FALSE(instance.plugin->activate(instance.plugin, rate, 1, 64));
    }
    for (const double rate : {1000.0, 1234.5678, 10000.0, 44100.0, 96000.0, 768000.0}) {
        ASSERT_TRUE(instance.activate(rate, 16384));
        for (const int frames : {1, 10, 17, 256, 1536, 2027, 4096}) {
            for (int i = upTo(40); i > 0; --i) {
                const auto time = static_cast<uint32_t>(upTo(frames - 1));
                const NoteTable::Note to{any(30), any(1), any(15), any(127)};
                switch (upTo(4)) {
                    case 0:
                        instance.events.expression(any(6), to, 2.0, time);
                        break;
                    case 1:
                        instance.events.midi(0x80 + upTo(0x7F), upTo(127), upTo(127), time);
                        break;
                    case 2:
                        instance.events.value(static_cast<Id>(upTo(41)), upTo(10) / 10.0, time);
                        break;
                    default:
                        instance.events.note(static_cast<uint16_t>(upTo(3)), to, upTo(9) / 9.0,
                                             time);
                }
            }
            const Sound sound = instance.render(frames);
            EXPECT_NE(instance.status, kProcessError);
            ASSERT_FALSE(std::isnan(sound.peak())) << rate << ' ' << frames;
            for (const auto* side : {&sound.left, &sound.right}) {
                for (const float x : *side) ASSERT_NE(std::fpclassify(x), FP_SUBNORMAL);
            }
            if (upTo(9) == 0) instance.onAudio([&] { instance.plugin->reset(instance.plugin); });
        }
        instance.told();
        instance.deactivate();
    }
}

constexpr float kQuiet = 1e-6f;

// Whether the instrument sleeps after a while; `news` gets what came out meanwhile.
bool comesToRest(Instance& instance, std::string& news) {
    for (int second = 0; second < 12; ++second) {
        instance.render(44100);
        news += instance.news;
        if (instance.status == kProcessSleep) return true;
    }
    return false;
}

TEST_F(Clap, LetsGoOfTheNotesThatAreMeant) {
    constexpr uint16_t kMidi = kEventMidi;
    const NoteTable::Note note{7, 0, 2, 60};
    const struct {
        const char* what;
        NoteTable::Note to;
        uint16_t type;
        bool ends;
        bool pedal = false;
    } rows[] = {
        {"the note", note, kEventNoteOff, true},
        {"all", {}, kEventNoteOff, true},
        {"its id", {7, -1, -1, -1}, kEventNoteOff, true},
        {"its channel", {-1, -1, 2, -1}, kEventNoteOff, true},
        {"its key, in MIDI", {-1, 0, 5, 60}, kMidi, true},
        {"choked", note, kEventNoteChoke, true},
        {"all choked", {}, kEventNoteChoke, true, true},
        {"another id", {8, 0, 2, 60}, kEventNoteOff, false},
        {"another channel", {-1, 0, 3, 60}, kEventNoteOff, false},
        {"another port", {-1, 1, -1, -1}, kEventNoteOff, false},
        {"another key", {-1, 0, 2, 61}, kEventNoteOff, false},
        {"no volume", note, kEventNoteExpression, false},
        {"the note, on the pedal", note, kEventNoteOff, false, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Instance instance(host_);
        instance.activate();
        instance.events.value(kProgramId, 14);          // a short release
        instance.events.note(kEventNoteOn, note, 0.0);  // soft is not off
        EXPECT_GT(instance.render(22050).peak(), 0.0005f);
        if (row.pedal) instance.events.midi(0xB0, 64, 127);
        if (row.type == kMidi) {
            instance.events.midi(0x80 + row.to.channel, row.to.key, 0);
        } else if (row.type == kEventNoteExpression) {
            instance.events.expression(kNoteExpressionVolume, row.to, 0.0);
        } else {
            instance.events.note(row.type, row.to, 0.0);
        }
        std::string news;
        EXPECT_EQ(comesToRest(instance, news), row.ends);
        EXPECT_EQ(news, row.ends ? "note 7 0 2 60" : "");
    }
}

TEST_F(Clap, TellsOfNotesThatEndAndSleeps) {
    Instance instance(host_);
    instance.activate();
    std::string news;
    ASSERT_TRUE(comesToRest(instance, news));
    EXPECT_EQ(instance.render(64).silent, 3u);
    instance.events.value(kProgramId, 14);
    for (const int key : {60, 64}) {
        instance.events.note(kEventNoteOn, {key, 0, 0, static_cast<int16_t>(key)}, 0.8, 9);
    }
    instance.events.note(kEventNoteOn, {65, 0, 1, 64}, 0.8, 11);  // takes the key over
    EXPECT_EQ(instance.render(1024).silent, 0u);
    EXPECT_EQ(instance.status, kProcessContinue);
    EXPECT_EQ(instance.news, "note 64 0 0 64");
    instance.events.note(kEventNoteOff, {64, 0, 0, 64}, 0);  // is over already
    instance.events.note(kEventNoteOff, {60, 0, 0, 60}, 0);
    EXPECT_FALSE(comesToRest(instance, news));
    EXPECT_EQ(news, "");
    EXPECT_GT(instance.render(4096).peak(), 0.001f);
    instance.events.note(kEventNoteChoke, {}, NAN);  // cuts off
    EXPECT_LT(instance.render(4096).peak(), kQuiet);
    EXPECT_EQ(instance.news, "note 60 0 0 60; note 65 0 1 64");
    instance.events.value(state::kVolume, 0.0);  // not a note's end
    instance.events.note(kEventNoteOn, {66, 0, 0, 66}, 0.8);
    EXPECT_TRUE(comesToRest(instance, news));
    EXPECT_EQ(news, "");
}

TEST_F(Clap, FallsSilentWhenResetOrActivatedAgain) {
    const std::function<void(Instance&)> rows[] = {
        [](Instance& instance) {
            instance.onAudio([&] { instance.plugin->reset(instance.plugin); });
        },
        [](Instance& instance) {
            instance.deactivate();
            instance.activate();
        },
    };
    for (const auto& row : rows) {
        Instance instance(host_);
        instance.activate();
        instance.events.midi(0x90, 60, 100);
        EXPECT_GT(instance.render(22050).peak(), 0.001f);
        row(instance);
        EXPECT_LT(instance.render(4096).peak(), kQuiet);
        instance.events.midi(0x90, 60, 100);
        EXPECT_GT(instance.render(22050).peak(), 0.001f);
    }
}

}  // namespace
