// Reading whole files with a size limit.
#include "platform/file.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace {

TEST(File, IsReadWholeUpToTheBound) {
    const TemporaryFolder folder;
    const std::string contents("a\r\n\0b\x1a\xff", 7);
    folder.write("file", contents);
    folder.write("empty", "");
    EXPECT_EQ(platform::readFile(folder.path() + "file", 7), contents);
    EXPECT_EQ(platform::readFile(folder.path() + "file", 6), std::nullopt);
    EXPECT_EQ(platform::readFile(folder.path() + "empty", 0), "");
}

TEST(File, IsNothingWhenItIsNoRegularFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(platform::readFile(folder.path() + "missing", 10), std::nullopt);
    EXPECT_EQ(platform::readFile(folder.path(), 10), std::nullopt);
    EXPECT_EQ(platform::readFile("", 10), std::nullopt);
    EXPECT_FALSE(platform::fileExists(folder.path() + "missing"));
    EXPECT_FALSE(platform::fileExists(folder.path()));
    folder.write("file", "x");
    EXPECT_TRUE(platform::fileExists(folder.path() + "file"));
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

}  // namespace
