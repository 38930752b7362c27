// Settings on either system.
#include "platform/settings_store.h"

#include <random>

#include <gtest/gtest.h>

#include "platform/folders.h"
#include "tests/support/temporary_folder.h"

namespace {

TEST(SettingsStore, KeepsTextsApartFromOneAnother) {
    const TemporaryFolder base;
    const platform::ScopedFolders folders("", base.path());
    // The registry outlives a test, so each run takes a product of its own.
    const std::string product = "Test " + std::to_string(std::random_device{}());
    const platform::SettingsStore settings("Tembrilon", product);
    EXPECT_FALSE(settings.read("SkinName"));
    const std::string odd = "/a = b\\c\nd \xC3\xA9";
    EXPECT_TRUE(settings.write("SkinName", "Night"));
    EXPECT_TRUE(settings.write("DataPath", odd));
    EXPECT_EQ(settings.read("SkinName"), "Night");
    EXPECT_EQ(settings.read("DataPath"), odd);
    EXPECT_TRUE(settings.write("SkinName", ""));
    EXPECT_EQ(settings.read("SkinName"), "");
    EXPECT_EQ(settings.read("DataPath"), odd);
}

}  // namespace
