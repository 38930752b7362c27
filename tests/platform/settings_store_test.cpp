// Settings on either system.
#include "platform/settings_store.h"

#include <gtest/gtest.h>

namespace {

TEST(SettingsStore, KeepsTextsApartFromOneAnother) {
    const platform::SettingsStore settings("Tembrilon", "Quarzel Strings");
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
