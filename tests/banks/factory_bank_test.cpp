// The names of the factory bank, its built file, and the measures that measure_bank judges it by.
#include <cmath>
#include <cstring>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "banks/bank_source.h"
#include "banks/listening.h"
#include "platform/file.h"
#include "platform/folders.h"
#include "platform/product.h"
#include "state/chunks.h"
#include "tests/support/recorded_messages.h"

namespace {

const banks::BankSource& factoryBank() {
    static const banks::BankSource source = [] {
        const auto text = platform::readFile(QUARZEL_FACTORY_BANK, 1 << 20);
        return banks::parseBankSource(text.value());
    }();
    return source;
}

TEST(FactoryBank, NamesEverySoundWithWordsUsedTwiceAtMost) {
    EXPECT_EQ(factoryBank().programs, state::kNumPrograms);
    std::map<std::string, int> uses;
    for (int program = 0; program < state::kNumPrograms; ++program) {
        std::istringstream name(factoryBank().bank.programName(program));
        for (std::string word; name >> word;) ++uses[word];
    }
    for (const auto& [word, count] : uses) {
        const bool joins = word == "of" || word == "and" || word == "at" || word == "in" ||
                           word == "on" || word == "the" || word == "by";
        if (!joins) {
            EXPECT_LE(count, 2) << word;
        }
    }
}

TEST(FactoryBank, IsWhatTheBuiltDefaultBankLoads) {
    const platform::ScopedFolders folders(QUARZEL_DEFAULT_BANK_FOLDER, "");
    const RecordedMessages messages;
    state::Bank loaded;
    state::loadDefaultBank(loaded, platform::kProductCode);
    EXPECT_TRUE(messages.all.empty());
    EXPECT_FALSE(state::defaultBankMissing());
    banks::BankSource source = factoryBank();
    EXPECT_EQ(std::memcmp(&loaded.chunk(), &source.bank.chunk(), sizeof(state::BankChunk)), 0);
}

// That the measures notice what they are there for.

banks::Take tone(double hertz, double gain) {
    constexpr double kSeconds = 4.0;
    banks::Take take;
    for (std::size_t i = 0; i < banks::frameAt(kSeconds); ++i) {
        const double seconds = static_cast<double>(i) / banks::kSampleRate;
        take.left.push_back(
            static_cast<float>(gain * std::sin(2.0 * 3.141592653589793 * hertz * seconds)));
    }
    take.right = take.left;
    return take;
}

TEST(Listening, MeasuresLevels) {
    // A sine of full scale on one side is -3.01 LUFS at 997 Hz, by definition; on both 0.
    const banks::Take take = tone(997.0, 0.1);
    EXPECT_NEAR(banks::peakDb(take), -20.0, 0.01);
    EXPECT_NEAR(banks::momentaryLoudness(take, 0, take.frames()), -20.0, 0.05);
    EXPECT_NEAR(banks::integratedLoudness(take), -20.0, 0.05);
    EXPECT_LT(banks::integratedLoudness(tone(40.0, 0.1)), -24.0);
}

TEST(Listening, HearsACutAndAClickAndALateSound) {
    const banks::Take steady = tone(440.0, 0.1);
    EXPECT_LT(banks::sharpestEdge(steady, 0).db, 1.0);
    banks::Take cut = steady;
    cut.left.resize(banks::frameAt(2.5003));  // near a crest
    cut.left.resize(steady.frames(), 0.0f);
    cut.right = cut.left;
    EXPECT_GT(banks::sharpestEdge(cut, 0).db, 12.0);
    EXPECT_NEAR(banks::sharpestEdge(cut, 0).seconds, 2.5, 0.01);
    EXPECT_NEAR(banks::silentFrom(cut), 2.5, 0.001);
    cut.right[banks::frameAt(3.9)] = 0.002f;  // -54 dB of full scale
    EXPECT_NEAR(banks::silentFrom(cut), 3.9, 0.001);
}

TEST(Listening, TellsSoundsApartButNotLevels) {
    const auto reference = banks::picture(tone(440.0, 0.1));
    EXPECT_LT(banks::distanceDb(reference, banks::picture(tone(440.0, 0.05))), 0.1);
    EXPECT_GT(banks::distanceDb(reference, banks::picture(tone(880.0, 0.1))), 3.0);
    banks::Take oneSided = tone(440.0, 0.1);
    for (float& sample : oneSided.right) sample *= 0.5f;
    EXPECT_GT(banks::distanceDb(reference, banks::picture(oneSided)), 1.0);
    EXPECT_NEAR(banks::leanDb(oneSided, 0, oneSided.frames()), -6.02, 0.01);
}

}  // namespace
