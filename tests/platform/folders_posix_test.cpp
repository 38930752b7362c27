// Folders and documents on Linux, as the environment names them.
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/open_document.h"
#include "platform/shared_library.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wait_for.h"

namespace {

// Sets or removes an environment variable within a scope.
class Variable {
  public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* const before = std::getenv(name)) before_ = before;
        set(value);
    }
    ~Variable() { set(before_ ? before_->c_str() : nullptr); }

  private:
    void set(const char* value) const {
        if (value) {
            setenv(name_, value, 1);
        } else {
            unsetenv(name_);
        }
    }

    const char* const name_;
    std::optional<std::string> before_;
};

TEST(PosixFolders, FollowTheConventionsOfDesktops) {
    const TemporaryFolder home;
    home.write("file", "");
    const std::string base = home.path() + "home", given = home.path() + "given";
    const std::string missing = base + "/missing", file = home.path() + "file";
    const std::string deep = home.path() + "not/yet/there";
    std::filesystem::create_directory(base);
    const struct {
        const char* given;
        const char* home;
        std::optional<std::string> folder;
    } rows[] = {{given.c_str(), base.c_str(), given},
                {given.c_str(), nullptr, given},
                {"relative", base.c_str(), base + "/.config"},
                {"", base.c_str(), base + "/.config"},
                {nullptr, base.c_str(), base + "/.config"},
                {nullptr, nullptr, std::nullopt},
                {nullptr, "relative", std::nullopt},
                {nullptr, missing.c_str(), missing + "/.config"},
                {deep.c_str(), base.c_str(), deep},
                {file.c_str(), base.c_str(), std::nullopt}};
    int number = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(number++);
        const Variable config("XDG_CONFIG_HOME", row.given);
        const Variable user("HOME", row.home);
        EXPECT_EQ(platform::applicationDataFolder(), row.folder);
        EXPECT_TRUE(!row.folder || std::filesystem::is_directory(*row.folder));
    }
}

TEST(PosixFolders, OfALibraryIsWhereItsFileLies) {
    EXPECT_TRUE(platform::fileExists(platform::moduleFolder().value_or("") + "platform_tests"));
}

TEST(PosixFolders, OfALibraryAreUnknownOnceItsFileIsGone) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "library.so";
    std::filesystem::copy_file(TEST_LIBRARY, path);
    const platform::SharedLibrary library(path);
    const auto ownFolder = reinterpret_cast<const char* (*)()>(library.symbol("ownFolder"));
    EXPECT_EQ(ownFolder(), std::filesystem::canonical(folder.path()).string() + '/');
    std::filesystem::remove(path);
    EXPECT_STREQ(ownFolder(), "unknown");
}

TEST(OpenDocument, HandsThePathToTheOpenerAsItIs) {
    const TemporaryFolder folder;
    {
        const Variable path("PATH", folder.path().c_str());
        EXPECT_FALSE(platform::openDocument("/a document"));  // no opener
    }
    const std::string opener = folder.write(
        "xdg-open", "#!/bin/sh\nprintf %s \"$1\" > \"$0.part\"\nmv \"$0.part\" \"$0.seen\"\n");
    std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    const std::string folders = folder.path() + ":" + std::getenv("PATH");
    const Variable path("PATH", folders.c_str());
    const std::string document = "/a folder/$HOME; \"quoted\" `x`.rtf";
    EXPECT_TRUE(platform::openDocument(document));
    EXPECT_TRUE(waitFor([&] { return platform::fileExists(opener + ".seen"); }));
    EXPECT_EQ(platform::readFile(opener + ".seen", 1000), document);
    folder.write("xdg-open", "#!/bin/sh\nexec sleep 5\n");
    EXPECT_TRUE(platform::openDocument(document));  // a viewer in the foreground
    folder.write("xdg-open", "#!/bin/sh\nexit 3\n");
    EXPECT_FALSE(platform::openDocument(document));  // nothing opens it
}

}  // namespace
