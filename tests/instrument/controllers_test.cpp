// Bound controllers of several instances, and the file that keeps them.
#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "platform/file.h"
#include "platform/folders.h"
#include "tests/support/played_instrument.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace {

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
