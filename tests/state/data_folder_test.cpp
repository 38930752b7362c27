// The data folder and the settings.
#include "state/data_folder.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "platform/file.h"
#include "platform/folders.h"
#include "tests/support/temporary_folder.h"

namespace {

TEST(DataFolder, IsCreatedOnceAndFoundAgain) {
    const TemporaryFolder base;
    const platform::ScopedFolders folders("", base.path());
    const auto folder = state::findDataFolder("Quarzel Strings");
    ASSERT_TRUE(folder);
    EXPECT_TRUE(std::filesystem::is_directory(*folder));
    EXPECT_NE(folder->find("Quarzel Studio 9"), std::string::npos);
    EXPECT_NE(folder->back(), 's');
    EXPECT_EQ(state::findDataFolder("Quarzel Strings"), folder);
}

TEST(DataFolder, IsNothingWhereItCannotBe) {
    {
        const platform::ScopedFolders folders("", "");
        EXPECT_FALSE(state::findDataFolder("Quarzel Strings"));
    }
    const TemporaryFolder base;
    base.write("Quarzel Studio 9", "a file in the way");
    const platform::ScopedFolders folders("", base.path());
    EXPECT_FALSE(state::findDataFolder("Quarzel Strings"));
}

TEST(DataFolder, IsCutAtTheLongestPath) {
    const TemporaryFolder base;
    const platform::ScopedFolders folders("", base.path());
    const auto folder = state::findDataFolder(std::string(250, 'x'));
    if (platform::kSeparator == '/') {
        ASSERT_TRUE(folder);
        EXPECT_EQ(folder->size(), 255u);
    } else {
        EXPECT_FALSE(folder) << "Windows makes no folder of that length";
    }
}

}  // namespace
