// Documents reach the desktop's opener, whatever characters their path contains.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include <gtest/gtest.h>

#include "platform/file.h"
#include "platform/open_document.h"
#include "tests/support/temporary_folder.h"

namespace {

// Sets another search path within a scope.
class ScopedPath {
  public:
    explicit ScopedPath(const std::string& path) : before_(std::getenv("PATH")) {
        setenv("PATH", path.c_str(), 1);
    }
    ~ScopedPath() { setenv("PATH", before_.c_str(), 1); }

  private:
    std::string before_;
};

TEST(OpenDocument, HandsThePathToTheOpenerAsItIs) {
    const TemporaryFolder folder;
    folder.write("xdg-open",
                 "#!/bin/sh\nprintf %s \"$1\" > \"$0.part\"\nmv \"$0.part\" \"$0.seen\"\n");
    std::filesystem::permissions(folder.path() + "xdg-open", std::filesystem::perms::owner_all);
    const ScopedPath path(folder.path() + ":" + std::getenv("PATH"));
    const std::string document = "/a folder/$HOME; \"quoted\" `x`.rtf";
    EXPECT_TRUE(platform::openDocument(document));
    const std::string seen = folder.path() + "xdg-open.seen";
    for (int i = 0; i < 2000 && !platform::fileExists(seen); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_EQ(platform::readFile(seen, 1000), document);
}

TEST(OpenDocument, FailsWithoutAnOpener) {
    const TemporaryFolder empty;
    const ScopedPath path(empty.path());
    EXPECT_FALSE(platform::openDocument("/a document"));
}

}  // namespace
