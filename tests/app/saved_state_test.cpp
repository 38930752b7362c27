// State saved between runs, and unusable files.
#include "app/saved_state.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/file.h"
#include "platform/folders.h"
#include "host/error.h"
#include "tests/support/temporary_folder.h"

namespace {

class StandaloneState : public testing::Test {
  protected:
    static constexpr std::size_t kLargest = 1 << 20;
    std::string file() const {
        return folder_.path() + "config/Tembrilon/Quarzel Strings/standalone-54737449.fxb";
    }
    void SetUp() override { platform::createFolder(folder_.path() + "config"); }

    TemporaryFolder folder_;
    platform::ScopedFolders folders_{folder_.path(), folder_.path() + "config"};
    host::PluginHost host_{TEST_INSTRUMENT, 44100, 64};
};

TEST_F(StandaloneState, BringsBackWhatHasChanged) {
    app::SavedState state(host_);
    state.load();  // no file
    state.save();
    std::filesystem::remove(file());
    state.save();
    EXPECT_FALSE(platform::fileExists(file()));
    host_.setProgram(2);
    host_.setProgramName("Mine");
    host_.setParameter(0, 0.75f);
    state.save();

    host::PluginHost next(TEST_INSTRUMENT, 44100, 64);
    app::SavedState(next).load();
    EXPECT_EQ(next.program(), 2);
    EXPECT_EQ(next.programName(2), "Mine");
    EXPECT_EQ(next.parameter(0), 0.75f);
}

TEST_F(StandaloneState, SetsADamagedFileAsideOrLeavesItAlone) {
    const std::string aside = file() + ".damaged";
    app::SavedState(host_).save();
    for (int number = 5; number <= 99; ++number)
        platform::createFolder(aside + '-' + std::to_string(number));
    for (const auto& kept : {aside, aside + "-2", aside + "-3", aside + "-4", file()}) {
        ASSERT_TRUE(platform::writeFile(file(), "no bank"));
        app::SavedState state(host_);
        try {
            state.load();
            ADD_FAILURE() << "loaded";
        } catch (const host::Error& error) {
            const std::string place =
                kept == file() ? "where it is, and nothing is saved" : "as " + kept;
            EXPECT_EQ(std::string(error.what()), file() + " is not a bank file. It is kept " +
                                                     place + "; the default bank is played.");
        }
        state.save();
        EXPECT_EQ(platform::readFile(kept, kLargest), "no bank");
        std::filesystem::remove(kept);
        platform::createFolder(kept);  // takes the name of the next one
    }
}

TEST_F(StandaloneState, PutsEveryBankAsideUnderAnotherName) {
    EXPECT_EQ(app::SavedState(host_).putAside(), "");
    for (const std::string& kept : {file() + ".before", file() + ".before-2"}) {
        host_.setProgramName(kept.c_str() + kept.size() - 8);
        app::SavedState(host_).save();
        const auto bank = platform::readFile(file(), kLargest);
        EXPECT_EQ(app::SavedState(host_).putAside(), kept);
        EXPECT_FALSE(platform::fileExists(file()));
        EXPECT_EQ(platform::readFile(kept, kLargest), bank);
    }
    EXPECT_NE(platform::readFile(file() + ".before", kLargest),
              platform::readFile(file() + ".before-2", kLargest));
}

TEST_F(StandaloneState, SaysThatItHasNoPlace) {
    const platform::ScopedFolders none(folder_.path(), "");
    app::SavedState state(host_);
    state.load();
    EXPECT_THROW(state.save(), host::Error);
}

}  // namespace
