// The Windows services as the system really answers them: registry, folders, message boxes.
#include <filesystem>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include <windows.h>

#include <shlobj.h>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/message_box.h"
#include "platform/settings_store.h"
#include "tests/support/message_box_user.h"
#include "tests/support/temporary_folder.h"

namespace {

TEST(WindowsMessage, IsABoxWithOneButtonThatBlocksUntilDismissed) {
    std::string seen;
    std::thread user([&] { seen = dismissMessageBox("Preset loader"); });
    platform::showMessage("Preset loader", "Default bank error: not an fxb file",
                          platform::MessageIcon::kNone);
    user.join();
    EXPECT_EQ(seen, "Default bank error: not an fxb file [OK]");
}

TEST(WindowsSettings, LieInTheRegistryAsWideTexts) {
    const platform::SettingsStore settings("Tembrilon", "Quarzel Strings");
    const std::string value =
        "N\xC3\xA4"
        "cht \xE5\xBC\xA6";  // beyond the 8-bit code page
    ASSERT_TRUE(settings.write("SkinName", value));
    wchar_t stored[64] = {};
    DWORD bytes = sizeof stored;
    ASSERT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Software\\Tembrilon\\Quarzel Strings", L"SkinName",
                           RRF_RT_REG_SZ, nullptr, stored, &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(std::wstring(stored), L"N\u00E4cht \u5F26");
    EXPECT_EQ(settings.read("SkinName"), value);
    EXPECT_FALSE(settings.read("Never written"));

    const DWORD number = 7;
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Tembrilon\\Quarzel Strings", L"Number",
                    REG_DWORD, &number, sizeof number);
    EXPECT_FALSE(settings.read("Number"));
}

TEST(WindowsFolders, AreTheRoamingOneAndOurOwn) {
    const auto roaming = platform::applicationDataFolder();
    ASSERT_TRUE(roaming);
    EXPECT_NE(roaming->find("AppData\\Roaming"), std::string::npos) << *roaming;
    const std::string module = platform::moduleFolder();
    EXPECT_EQ(module.back(), '\\');
    EXPECT_TRUE(platform::fileExists(module + "platform_tests.exe")) << module;
}

TEST(WindowsFiles, WithLettersOutsideTheCodePageFailQuietly) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "\xE5\xBC\xA6 with spaces.bin";
    const bool written = platform::writeFile(path, "contents");
    EXPECT_EQ(platform::fileExists(path), written);
    EXPECT_EQ(platform::readFile(path, 100).has_value(), written);
    EXPECT_FALSE(platform::fileExists(folder.path() + "?"));
    EXPECT_FALSE(platform::writeFile(folder.path() + "a\"b", "x"));
}

}  // namespace
