// Programs, parameters and controllers together: what sounds and is stored, and from which thread.
#include "instrument/instrument.h"

#include <cmath>
#include <filesystem>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <random>
#include <thread>
#include <utility>

#include <gtest/gtest.h>

#include "platform/file.h"
#include "platform/folders.h"
#include "tests/support/played_instrument.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace {

void onAnotherThread(std::function<void()> action) {
    std::thread(std::move(action)).join();
}

TEST(HeldKeys, AreThoseThatSoundAndAreReleasedTogether) {
    PlayedInstrument instrument;
    instrument.noteOn(60);
    instrument->playKey(100, 90);
    instrument.noteOn(127);  // unplayable
    EXPECT_GT(instrument.render(2000).peak(), 0.0f);
    EXPECT_EQ(instrument->heldKeys(), engine::KeySet(1) << 60 | engine::KeySet(1) << 100);
    instrument->playKey(100, 0);
    instrument.render(64);
    EXPECT_EQ(instrument->heldKeys(), engine::KeySet(1) << 60);
    instrument.send(0xB0, 123);
    instrument.render(64);
    EXPECT_TRUE(instrument->heldKeys().none());
}

// The host learns what to display, and the editor what to redraw.
TEST(Instrument, TellsItsHostAndItsEditorOfChanges) {
    constexpr std::uint64_t kAll = (std::uint64_t{1} << state::kNumParams) - 1;
    PlayedInstrument instrument;
    EXPECT_EQ(instrument.host().calls(), "");
    EXPECT_EQ(instrument->takeChangedParameters(), kAll);
    instrument->setParameter(state::kMix, 0.5f);
    EXPECT_EQ(instrument.host().calls(), "");
    EXPECT_EQ(instrument->takeChangedParameters(), std::uint64_t{1} << state::kMix);
    EXPECT_EQ(instrument->takeChangedParameters(), 0u);
    instrument->beginEdit(3);
    instrument->setParameterAutomated(3, 0.25f);
    instrument->endEdit(3);
    instrument->renameProgram(3, "Morning");
    instrument->setProgram(9);
    instrument->sizeWindow(640, 480);
    EXPECT_EQ(instrument.host().calls(),
              "begin 3; edit 3 0.250; end 3; name; program; size 640 480");
    EXPECT_EQ(instrument->takeChangedParameters(), kAll);
    EXPECT_EQ(instrument->programName(3), "Morning");
}

// Holds a note for a while.
void playOn(PlayedInstrument& instrument) {
    instrument.noteOn(64);
    instrument.render(4000);
}

TEST(Instrument, SoundsTheSameWhicheverThreadChangesIt) {
    const auto sound = [](bool elsewhere) {
        PlayedInstrument instrument;
        playOn(instrument);
        const auto change = [&] {
            instrument->setParameter(state::kBrigthness, 0.2f);
            instrument->setParameter(state::kViolin, 1.0f);
            for (int i = 0; i < 3; ++i) instrument->setParameter(state::kHP, 0.9f);
            EXPECT_EQ(instrument->parameter(state::kViolin), 1.0f);
        };
        elsewhere ? onAnotherThread(change) : change();
        return instrument.render(2000);
    };
    EXPECT_TRUE(sound(true) == sound(false));
}

TEST(Instrument, LeavesChangesOfOtherThreadsToTheRendererWhileOneRenders) {
    PlayedInstrument instrument;
    playOn(instrument);
    onAnotherThread([&] {
        instrument->setParameter(state::kVoiceCountParam, 0.0f);
        instrument->setSampleRate(96000.0);
    });
    EXPECT_EQ(instrument.engine().polyphony(), engine::kInitialVoices);
    EXPECT_EQ(instrument.engine().sampleRate(), 44100.0);
    instrument.render(1);
    EXPECT_EQ(instrument.engine().polyphony(), engine::kMinVoices);
    EXPECT_EQ(instrument.engine().sampleRate(), 96000.0);

    onAnotherThread([&] { instrument->setSampleRate(88200.0); });
    instrument->suspend();  // carries out what is pending
    EXPECT_EQ(instrument.engine().sampleRate(), 88200.0);
    onAnotherThread([&] { instrument->setSampleRate(48000.0); });
    EXPECT_EQ(instrument.engine().sampleRate(), 48000.0);
}

TEST(Instrument, ProgramOfAnotherThreadSilencesNoOtherBlock) {
    PlayedInstrument instrument;
    playOn(instrument);
    onAnotherThread([&] { instrument->setProgram(5); });
    EXPECT_EQ(instrument->program(), 5);
    instrument.noteOn(64);
    EXPECT_GT(instrument.render(4000).peak(), 0.01f);
}

// Runs a callback while a program is being sent, and at each note.
class Interrupted : public engine::Engine {
  public:
    using Engine::Engine;
    void setVolume(float gain) override { volume = gain; }
    void setBrightness(float control) override {
        Engine::setBrightness(control);
        if (const auto action = std::exchange(interruption, nullptr)) action();
    }
    void noteOn(int, int) override { atNote(); }
    std::function<void()> interruption;
    std::function<void()> atNote;
    float volume = -1.0f;
};

class AnInterruptedProgram : public testing::Test {
  protected:
    AnInterruptedProgram() {
        auto engine = std::make_unique<Interrupted>(44100.0);
        sent = engine.get();
        instrument = std::make_unique<PlayedInstrument>(std::move(engine));
        instrument::Instrument& i = **instrument;
        i.bankChunk().programs[5].values[state::kVolume] = 0.75f;
    }
    Interrupted* sent;
    std::unique_ptr<PlayedInstrument> instrument;
};

TEST_F(AnInterruptedProgram, IsFollowedByTheOneThatAnotherThreadAsksFor) {
    instrument::Instrument& i = **instrument;
    sent->interruption = [&] {
        i.setProgram(7);  // from within
        EXPECT_EQ(i.program(), 3);
        onAnotherThread([&] { i.setProgram(5); });
        EXPECT_EQ(i.program(), 5);
    };
    i.setProgram(3);
    EXPECT_EQ(sent->interruption, nullptr);
    EXPECT_EQ(i.program(), 5);
    EXPECT_EQ(sent->volume, 0.75f);
}

// Another thread requests the program again each time it is sent.
TEST_F(AnInterruptedProgram, CostsABlockNoMoreThanOneForEachSegment) {
    instrument::Instrument& i = **instrument;
    instrument->render(1);
    int asked = 0;
    const auto ask = [&] { onAnotherThread([&] { i.setProgram(i.program()); }); };
    const std::function<void()> askAgain = [&] {
        if (++asked < 100) sent->interruption = askAgain;
        ask();
    };
    sent->interruption = askAgain;
    ask();
    sent->atNote = [&] {
        i.setParameter(state::kVolume, 0.25f);
        EXPECT_EQ(sent->volume, 0.25f);
    };
    instrument->noteOn(60);
    instrument->render(engine::kLongestSegment);
    EXPECT_EQ(asked, 1);
    instrument->render(2 * engine::kLongestSegment);
    EXPECT_EQ(asked, 3);
    i.setParameter(state::kVolume, 0.5f);  // between two blocks
    EXPECT_EQ(asked, 4);
}

// intentional: "HP" and "Brigthness" walk to their values
TEST(Instrument, SoundsAProgramTheSameWhateverCameBeforeIt) {
    constexpr float kSprings[] = {0.9f, 0.2f, 0.6f, 0.3f, 0.75f, 0.0f};
    constexpr int kPrograms = 4 * static_cast<int>(std::size(kSprings));
    state::Bank bank;
    std::mt19937 random(1);
    for (int program = 0; program < kPrograms; ++program) {
        for (int index = 0; index < state::kNumParams; ++index) {
            if (index == state::kHP || index == state::kBrigthness) continue;
            bank.setValue(program, index, static_cast<float>(random() % 101) * 0.01f);
        }
        bank.setValue(program, state::kReverb, 1.0f);
        bank.setValue(program, state::kAmnt, program % 2 == 0 ? 0.5f : 0.95f);
        bank.setValue(program, state::kSpring, kSprings[program % std::size(kSprings)]);
    }
    const auto sound = [&](int before, int program) {
        PlayedInstrument instrument;
        instrument->bankChunk() = bank.chunk();
        instrument->setProgram(before);
        instrument->setProgram(program);
        for (const int key : {36, 64, 71}) instrument.noteOn(key);
        return instrument.render(6000);
    };
    for (int program = 1; program < kPrograms; ++program) {
        SCOPED_TRACE(program);
        EXPECT_TRUE(sound(program - 1, program) == sound(program, program));
    }
}

// A host saves values as they sound, whatever came in.
TEST(Instrument, StoresTheValuesOfAProgramAsItSendsThem) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const struct {
        float brought, kept, keptUnclamped;
    } rows[] = {{1.7f, 1.0f, 1.7f},      {-0.5f, 0.0f, -0.5f},     {0.3f, 0.3f, 0.3f},
                {kInfinity, 1.0f, 1.0f}, {-kInfinity, 0.0f, 0.0f}, {NAN, 0.0f, 0.0f}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.brought);
        PlayedInstrument instrument;
        state::BankChunk& chunk = instrument->bankChunk();
        chunk.parameters[state::kPan].programHeld = 0;
        chunk.parameters[state::kPan].value = row.brought;
        chunk.parameters[state::kSize].unclamped = 1;
        for (float& value : chunk.programs[3].values) value = row.brought;
        instrument->setProgram(3);
        EXPECT_EQ(chunk.parameters[state::kPan].value, row.kept);
        EXPECT_EQ(chunk.programs[3].values[state::kVolume], row.kept);
        EXPECT_EQ(chunk.programs[3].values[state::kSize], row.keptUnclamped);
        instrument->setParameter(state::kVolume, row.brought);
        EXPECT_EQ(chunk.programs[3].values[state::kVolume], row.kept);
    }
}

TEST(Instrument, ReadsOneIndexPastTheTable) {
    PlayedInstrument instrument;
    EXPECT_TRUE(std::isfinite(instrument->parameter(42)));
    EXPECT_EQ(instrument->parameter(43), 0.0f);
    EXPECT_EQ(instrument->parameter(-1), 0.0f);
}

struct DataFolder {
    TemporaryFolder module;
    TemporaryFolder applicationData;
    platform::ScopedFolders scope{module.path(), applicationData.path()};

    // The entry of the saved map; -2 without one.
    int saved(int parameter) const {
        const auto bytes = platform::readFile(
            applicationData.path() + "Quarzel Studio 9/Quarzel Strings/Pluginccmap.bin", 1000);
        return bytes ? static_cast<signed char>(bytes->at(4 * parameter)) : -2;
    }
};

// Plays a controller into the instrument.
tests::Sound control(PlayedInstrument& instrument, int controller, int value) {
    instrument.send(0xB5, controller, value);
    return instrument.render(64);
}

TEST(Controllers, AreSharedByAllInstancesAndKept) {
    const DataFolder folder;
    std::string file(168, '\xFF');
    file.replace(4 * state::kPan, 4, std::string("\x14\0\0\0", 4));
    file.replace(4 * state::kMix, 4, std::string("\x14\0\0\0", 4));
    folder.module.write("Pluginccmap.bin", file);
    auto first = std::make_unique<PlayedInstrument>();
    auto second = std::make_unique<PlayedInstrument>();
    control(*second, 20, 127);
    EXPECT_EQ((*second)->parameter(state::kPan), 1.0f);
    EXPECT_EQ((*second)->parameter(state::kMix), 1.0f);
    EXPECT_EQ((*first)->parameter(state::kPan), 0.5f);

    (*first)->learnSlot().arm(state::kSpring);
    control(*first, 21, 127);
    EXPECT_EQ((*first)->parameter(state::kSpring), 1.0f);
    control(*second, 21, 0);
    EXPECT_EQ((*second)->parameter(state::kSpring), 0.0f);
    EXPECT_EQ(first->host().calls(), "");  // a controller is no edit

    EXPECT_EQ(folder.saved(state::kSpring), -2);
    first.reset();
    EXPECT_EQ(folder.saved(state::kSpring), 21);
    (*second)->learnSlot().arm(state::kVolume);
    control(*second, 22, 64);
    EXPECT_EQ((*second)->parameter(state::kVolume), 64.0f * (1.0f / 127.0f));
    second.reset();
    EXPECT_EQ(folder.saved(state::kVolume), 22);
    EXPECT_EQ(folder.saved(state::kPan), 20);

    PlayedInstrument third;
    control(third, 22, 127);
    EXPECT_EQ(third->parameter(state::kVolume), 1.0f);
}

TEST(Controllers, LetGoOfWhatTheyHeldWhenAnotherInstanceBindsThem) {
    const DataFolder folder;
    PlayedInstrument first;
    PlayedInstrument second;
    second->setParameter(state::kEnvAttack, 0.0f);
    control(second, 11, 0);
    second.render(2000);  // until the ramp has come to its end
    second.noteOn(60);
    EXPECT_LT(second.render(2000).peak(), 1e-6f);
    first->learnSlot().arm(state::kPan);
    control(first, 11, 64);
    EXPECT_GT(second.render(2000).peak(), 1e-3f);
}

TEST(Controllers, WorkOnWhereTheirMapCanNeitherBeReadNorWritten) {
    const DataFolder folder;
    const RecordedMessages messages;
    std::filesystem::create_directories(folder.applicationData.path() +
                                        "Quarzel Studio 9/Quarzel Strings/Pluginccmap.bin/folder");
    {
        PlayedInstrument instrument;
        instrument->learnSlot().arm(state::kSpring);
        control(instrument, 21, 127);
        state::controllerMap().saveIfChanged();
        EXPECT_EQ(instrument->parameter(state::kSpring), 1.0f);
    }
    EXPECT_TRUE(messages.all.empty());
}

}  // namespace
