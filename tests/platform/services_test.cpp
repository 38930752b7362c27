// The services that are the same on every system: files, messages, settings, libraries.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <future>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/file.h"
#include "platform/settings_store.h"
#include "platform/shared_library.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

using platform::MessageIcon;
using platform::showMessage;

TEST(File, IsReadWholeUpToTheBound) {
    const TemporaryFolder folder;
    const std::string contents("a\r\n\0b\x1a\xff", 7);
    folder.write("file", contents);
    folder.write("empty", "");
    EXPECT_EQ(platform::readFile(folder.path() + "file", 7), contents);
    EXPECT_EQ(platform::readFile(folder.path() + "file", 6), std::nullopt);
    EXPECT_EQ(platform::readFileStart(folder.path() + "file", 6), contents.substr(0, 6));
    EXPECT_EQ(platform::readFile(folder.path() + "empty", 0), "");
    EXPECT_TRUE(platform::fileExists(folder.path() + "file"));
}

TEST(File, IsNothingWhenItIsNoRegularFile) {
    const TemporaryFolder folder;
    std::vector<std::string> paths = {folder.path() + "missing", folder.path(), ""};
#ifndef _WIN32
    paths.push_back(folder.path() + "pipe");
    ASSERT_EQ(mkfifo(paths.back().c_str(), 0600), 0);
    paths.push_back("/dev/zero");
    alarm(20);  // ends a test that waits for the pipe
#endif
    for (const std::string& path : paths) {
        SCOPED_TRACE(path);
        EXPECT_EQ(platform::readFile(path, 10), std::nullopt);
        EXPECT_EQ(platform::readFileStart(path, 10, platform::Links::kRefuse), std::nullopt);
        EXPECT_FALSE(platform::fileExists(path));
    }
#ifndef _WIN32
    const auto edit = [](const auto&) { return std::string("x"); };
    EXPECT_FALSE(platform::updateFile(paths[3], 10, edit));
    alarm(0);
#endif
}

TEST(File, EntriesOfAFolderAreListed) {
    const TemporaryFolder folder;
    EXPECT_TRUE(platform::folderEntries(folder.path()).empty());
    folder.write("b", "");
    folder.write("a.txt", "");
    std::filesystem::create_directory(folder.path() + "c");
    auto names = platform::folderEntries(folder.path());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"a.txt", "b", "c"}));
    EXPECT_TRUE(platform::folderEntries(folder.path() + "missing").empty());
}

TEST(Message, GoesToTheInnermostHandler) {
    const RecordedMessages outer;
    {
        const RecordedMessages inner;
        showMessage("one", "1", MessageIcon::kError);
        EXPECT_EQ(inner.all, (std::vector<RecordedMessage>{{"one", "1", MessageIcon::kError}}));
    }
    showMessage("two", "2", MessageIcon::kNone);
    EXPECT_EQ(outer.all, (std::vector<RecordedMessage>{{"two", "2", MessageIcon::kNone}}));
}

// A message may stand for minutes.
TEST(Message, HoldsNobodyUpWhileItStands) {
    std::future<void> other;
    auto reached = std::future_status::timeout;
    const platform::ScopedMessageHandler handler([&](const auto&, const auto&, auto) {
        other = std::async(std::launch::async, [] {
            const RecordedMessages inner;
            showMessage("two", "2", MessageIcon::kNone);
        });
        reached = other.wait_for(std::chrono::minutes(1));
    });
    showMessage("one", "1", MessageIcon::kNone);
    EXPECT_EQ(reached, std::future_status::ready);
}

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

TEST(SharedLibrary, FindsItsSymbolsAndNoOthers) {
    const platform::SharedLibrary library(TEST_LIBRARY);
    const auto answer = reinterpret_cast<int (*)()>(library.symbol("answer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(library.symbol("question"), nullptr);
}

TEST(SharedLibrary, SaysWhyAFileCannotBeLoaded) {
    const std::string text = __FILE__;
    for (const std::string& path : {text, text + ".missing", std::string("libm.so.6")}) {
        SCOPED_TRACE(path);
        try {
            platform::SharedLibrary library(path);
            ADD_FAILURE() << "loaded";
        } catch (const std::runtime_error& error) {
            EXPECT_STRNE(error.what(), "");
            EXPECT_EQ(std::string(error.what()).find(path), std::string::npos) << error.what();
        }
    }
}

}  // namespace
