// Plays every program of the factory bank and judges it by ear, in numbers.
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "banks/bank_source.h"
#include "platform/file.h"
#include "platform/folders.h"
#include "plugin/vst_synth.h"
#include "state/chunks.h"
#include "tests/banks/listening.h"
#include "tests/support/recorded_messages.h"

namespace {

constexpr double kLoudnessDb = -22.0;  // what every program is set to
constexpr double kLoudnessTolerance = 1.0;
constexpr double kFirstLoudnessTolerance = 2.0;
constexpr double kLowestPeakDb = -18.0;
constexpr double kHighestPeakDb = -3.0;
// Steady strings stay within 6 dB of themselves: beats, bow noise. A note cut at its crest, or a
// jump in the volume of a tail, stands out by more than ten.
constexpr double kSharpestEdgeDb = 7.0;
// One program against itself, begun at another moment of its chorus, differs by 1 dB.
constexpr double kLeastDistanceDb = 3.0;

// "HP" moves half way each time a program is sent to the engine: where it stands when an
// instrument has just started, and where it settles.
constexpr int kFirstChoice = 1;
constexpr int kSettled = 10;

const banks::BankSource& factoryBank() {
    static const banks::BankSource source = [] {
        const auto text = platform::readFile(QUARZEL_FACTORY_BANK, 1 << 20);
        return banks::parseBankSource(text.value());
    }();
    return source;
}

std::string label(int program) {
    return std::to_string(program) + ' ' + factoryBank().bank.programName(program);
}

listening::Take play(int program, int timesChosen) {
    const auto instrument = std::make_unique<state::Instrument>(listening::kSampleRate);
    instrument->bank() = factoryBank().bank;
    instrument->setProgram(0);
    for (int i = 0; i < timesChosen; ++i) instrument->setProgram(program);
    return listening::playPhrase(*instrument);
}

void expectCleanSound(const listening::Take& take) {
    EXPECT_GT(listening::peakDb(take), kLowestPeakDb);
    EXPECT_LT(listening::peakDb(take), kHighestPeakDb);
    const listening::Edge edge = listening::sharpestEdge(take);
    EXPECT_LT(edge.db, kSharpestEdgeDb) << "at " << edge.seconds << " s";
    EXPECT_TRUE(take.endedInSilence);
}

TEST(FactoryBank, HasItsSoundsInFrontAndInitBehind) {
    const state::Bank untouched;
    std::set<std::string> names;
    EXPECT_GE(factoryBank().programs, 64);
    for (int program = 0; program < state::kNumPrograms; ++program) {
        SCOPED_TRACE(label(program));
        const std::string name = factoryBank().bank.programName(program);
        if (program < factoryBank().programs) {
            EXPECT_NE(name, "Init");
            EXPECT_TRUE(names.insert(name).second);
            continue;
        }
        EXPECT_EQ(name, "Init");
        for (int index = 0; index < state::kNumParams; ++index) {
            EXPECT_EQ(factoryBank().bank.value(program, index), untouched.value(program, index));
        }
    }
}

TEST(FactoryBank, IsWhatTheBuiltDefaultBankLoads) {
    const platform::ScopedFolders folders(QUARZEL_DEFAULT_BANK_FOLDER, "");
    const RecordedMessages messages;
    state::Bank loaded;
    state::loadDefaultBank(loaded, plugin::kUniqueId);
    EXPECT_TRUE(messages.all.empty());
    EXPECT_FALSE(state::defaultBankMissing());
    banks::BankSource source = factoryBank();
    EXPECT_EQ(std::memcmp(&loaded.chunk(), &source.bank.chunk(), sizeof(state::BankChunk)), 0);
}

TEST(FactoryBank, EveryProgramSoundsCleanAndEquallyLoud) {
    for (int program = 0; program < factoryBank().programs; ++program) {
        SCOPED_TRACE(label(program));
        const listening::Take settled = play(program, kSettled);
        expectCleanSound(settled);
        EXPECT_NEAR(listening::loudnessDb(settled), kLoudnessDb, kLoudnessTolerance);
        const listening::Take first = play(program, kFirstChoice);
        expectCleanSound(first);
        EXPECT_NEAR(listening::loudnessDb(first), kLoudnessDb, kFirstLoudnessTolerance);
    }
}

TEST(FactoryBank, EveryProgramDiffersFromTheOneBeforeIt) {
    listening::Picture previous = listening::picture(play(0, kSettled));
    for (int program = 1; program < factoryBank().programs; ++program) {
        SCOPED_TRACE(label(program));
        const listening::Picture own = listening::picture(play(program, kSettled));
        EXPECT_GT(listening::distanceDb(previous, own), kLeastDistanceDb);
        previous = own;
    }
}

}  // namespace
