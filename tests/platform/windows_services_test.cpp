// The real Windows services: registry, folders, message boxes.
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
        "cht \xE5\xBC\xA6";  // outside the 8-bit code page
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
    EXPECT_NE(roaming->find("quarzel-test-"), std::string::npos) << *roaming << " is the user's";
    const std::string module = platform::moduleFolder().value_or("?");
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

constexpr const char* kVictimFile = "QUARZEL_VICTIM_FILE";

HANDLE openedToRead(const std::string& path) {
    return CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                       nullptr);
}

TEST(WindowsFiles, AreReplacedOnceNobodyReadsThem) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "file";
    ASSERT_TRUE(platform::writeFile(path, "old"));
    HANDLE reader = openedToRead(path);
    EXPECT_FALSE(platform::writeFile(path, "new"));
    EXPECT_EQ(platform::readFile(path, 100), "old");
    EXPECT_EQ(platform::folderEntries(folder.path()).size(), 1u);
    std::thread user([reader] {
        Sleep(100);
        CloseHandle(reader);
    });
    EXPECT_TRUE(platform::writeFile(path, "new"));
    user.join();
    EXPECT_EQ(platform::readFile(path, 100), "new");
}

TEST(WindowsFiles, StayWhenTheyAreWriteProtected) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "file";
    ASSERT_TRUE(platform::writeFile(path, "old"));
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(platform::writeFile(path, "new"));
    EXPECT_EQ(platform::readFile(path, 100), "old");
    EXPECT_EQ(platform::folderEntries(folder.path()).size(), 1u);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_FALSE(platform::writeFile(folder.path(), "new"));
    EXPECT_FALSE(platform::writeFile(path + "\\below", "new"));
}

// The test below runs this in a child process.
TEST(WindowsFiles, DISABLED_AreWrittenForEver) {
    char path[MAX_PATH] = {};
    ASSERT_NE(GetEnvironmentVariableA(kVictimFile, path, sizeof path), 0u);
    for (;;) {
        platform::writeFile(path, std::string(200000, 'a'));
        platform::writeFile(path, std::string(300000, 'b'));
    }
}

// A process of this program, killed at the end.
class Writer {
  public:
    explicit Writer(const std::string& line) {
        STARTUPINFOA start = {};
        start.cb = sizeof start;
        // Wine may refuse for a moment after another was killed.
        for (int attempt = 0; attempt < 50 && !runs(); ++attempt) {
            std::string words = line;
            if (!CreateProcessA(nullptr, words.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                &start, &process_))
                Sleep(100);
        }
    }
    ~Writer() {
        if (!runs()) return;
        TerminateProcess(process_.hProcess, 1);
        WaitForSingleObject(process_.hProcess, INFINITE);
        CloseHandle(process_.hProcess);
        CloseHandle(process_.hThread);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    bool runs() const { return process_.hProcess != nullptr; }

  private:
    PROCESS_INFORMATION process_ = {};
};

TEST(WindowsFiles, AreWholeWhoeverIsKilledWritingThem) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "file";
    SetEnvironmentVariableA(kVictimFile, path.c_str());
    char program[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, program, sizeof program);
    const std::string line = '"' + std::string(program) +
                             "\" --gtest_also_run_disabled_tests "
                             "--gtest_filter=WindowsFiles.DISABLED_AreWrittenForEver";
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE(round);
        DeleteFileA(path.c_str());
        {
            const Writer first(line), second(line);
            ASSERT_TRUE(first.runs() && second.runs()) << GetLastError();
            for (int wait = 0; wait < 3000 && !platform::fileExists(path); ++wait) Sleep(10);
            Sleep(3 * round);
        }
        const auto contents = platform::readFile(path, 1 << 20);
        ASSERT_TRUE(contents);
        EXPECT_TRUE(*contents == std::string(200000, 'a') || *contents == std::string(300000, 'b'));
        EXPECT_LE(platform::folderEntries(folder.path()).size(), 2u);
        ASSERT_TRUE(platform::writeFile(path, "next"));
        EXPECT_EQ(platform::readFile(path, 100), "next");
        EXPECT_EQ(platform::folderEntries(folder.path()).size(), 1u);
    }
}

}  // namespace
