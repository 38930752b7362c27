// The state of a file after a crash, a failing disk and concurrent writers.
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/settings_store.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/traced_child.h"

namespace {

namespace fs = std::filesystem;

const std::string kOld(5000, 'o');
const std::string kNew(9000, 'n');

std::optional<std::string> contentsOf(const std::string& path) {
    return platform::readFile(path, 1 << 20);
}

// What may exist at the path before the file is written.
struct Place {
    const char* name;
    void (*prepare)(const std::string& file);
    std::optional<std::string> before;
    std::ptrdiff_t entries;  // in the folder, after the write
};

void writeOld(const std::string& file) {
    ASSERT_TRUE(platform::writeFile(file, kOld));
}

const Place kPlaces[] = {
    {"nothing", [](const std::string&) {}, std::nullopt, 1},
    {"a file", writeOld, kOld, 1},
    {"a link to a file",
     [](const std::string& file) {
         writeOld(file + "-target");
         fs::create_symlink("file-target", file);
     },
     kOld, 2},
    {"a link to nothing", [](const std::string& file) { fs::create_symlink("file-target", file); },
     std::nullopt, 2},
};

// Evaluates the condition in a child process.
bool holdsInAChild(const std::function<bool()>& condition) {
    TracedChild child(condition);
    while (child.next()) {
    }
    return child.result() == TracedChild::kTrue;
}

// Writers in child processes: any crash, any failing call.
class WrittenFile : public testing::Test {
  protected:
    bool write(const std::string& contents) const { return platform::writeFile(file_, contents); }
    // For a traced child. Independent of the fixture, whose use costs system calls under
    // sanitizers.
    std::function<bool()> writingNew() const {
        return [file = file_] { return platform::writeFile(file, kNew); };
    }
    const TemporaryFolder folder_;
    const std::string file_ = folder_.path() + "file";
};

TEST_F(WrittenFile, IsOldOrNewWhereverTheWriterIsKilled) {
    for (const Place& place : kPlaces) {
        SCOPED_TRACE(place.name);
        fs::remove_all(folder_.path());
        fs::create_directory(folder_.path());
        place.prepare(file_);
        const bool isLink = fs::is_symlink(file_);
        int olds = 0, news = 0;
        const int killed = killAtEachCall(writingNew(), [&] {
            const auto contents = contentsOf(file_);
            ASSERT_TRUE(contents == place.before || contents == kNew);
            ++(contents == kNew ? news : olds);
            // At most one file is left over, and the next writer reuses it.
            EXPECT_LE(folder_.entryCount(), place.entries + 1);
            ASSERT_TRUE(write(kOld));
            EXPECT_EQ(contentsOf(file_), kOld);
            EXPECT_EQ(folder_.entryCount(), place.entries);
            EXPECT_EQ(fs::is_symlink(file_), isLink);
            if (!place.before) fs::remove(isLink ? file_ + "-target" : file_);
        });
        EXPECT_GT(killed, 10);
        EXPECT_GT(olds, 5);
        EXPECT_GT(news, 1);
    }
}

TEST_F(WrittenFile, IsWhatTheAnswerSaysWhicheverCallFails) {
    for (const int error : {ENOSPC, EDQUOT, EIO, EINTR, EACCES}) {
        SCOPED_TRACE(error);
        int failed = 0, refused = 0;
        for (int failing = 0;; ++failing) {
            writeOld(file_);
            TracedChild child(writingNew());
            auto call = child.next();
            for (int i = 0; i < failing && call; ++i) call = child.next();
            if (!call) break;
            if (!isFileCall(*call)) continue;
            ++failed;
            child.fail(error);
            while (child.next()) {
            }
            ASSERT_NE(child.result(), TracedChild::kDied);
            const bool written = child.result() == TracedChild::kTrue;
            refused += !written;
            EXPECT_EQ(contentsOf(file_), written ? kNew : kOld) << "call " << *call;
        }
        EXPECT_GE(failed, 14);
        EXPECT_GE(refused, error == EINTR ? 4 : 6) << "of " << failed;
        ASSERT_TRUE(write(kNew));
        EXPECT_EQ(folder_.entryCount(), 1);
    }
}

TEST_F(WrittenFile, IsReadWholeOrNotAtAllWhenReadingFails) {
    writeOld(file_);
    for (const int error : {EINTR, EIO}) {
        TracedChild child([file = file_] { return contentsOf(file) == kOld; });
        while (const auto call = child.next()) {
            if (*call != SYS_read) continue;
            child.fail(error);
            break;
        }
        int calls = 0;
        while (child.next() && ++calls < 1000) {
        }
        EXPECT_EQ(child.result(), error == EINTR ? TracedChild::kTrue : TracedChild::kFalse);
    }
}

// A loss of power cannot be tested, but the order of calls that it depends on can.
TEST_F(WrittenFile, ReachesTheDiskBeforeItsNameDoes) {
    std::vector<long> calls;
    TracedChild child(writingNew());
    while (const auto call = child.next()) {
        if (*call == SYS_write || *call == SYS_fsync || *call == SYS_rename) calls.push_back(*call);
    }
    EXPECT_EQ(calls, (std::vector<long>{SYS_write, SYS_fsync, SYS_rename, SYS_fsync}));
}

// With room for the old contents and a short text, but not for the new contents.
TEST_F(WrittenFile, StaysAtALimitOfItsSize) {
    EXPECT_TRUE(holdsInAChild([&] {
        const rlimit limit = {8000, 8000};
        setrlimit(RLIMIT_FSIZE, &limit);
        signal(SIGXFSZ, SIG_IGN);
        return write(kOld) && !write(kNew) && contentsOf(file_) == kOld &&
               folder_.entryCount() == 1 && write("short") && contentsOf(file_) == "short";
    }));
}

TEST_F(WrittenFile, KeepsItsPermissionsAndItsProtection) {
    writeOld(file_);
    fs::permissions(file_, fs::perms(0600));
    EXPECT_TRUE(write(kNew));
    EXPECT_EQ(fs::status(file_).permissions(), fs::perms(0600));
    fs::permissions(file_, fs::perms(0444));
    fs::permissions(folder_.path(), fs::perms(0777));
    // Unlike root, nobody may not write everything, but takes over root's leftover.
    folder_.write("other.writing", "left");
    fs::permissions(folder_.path() + "other.writing", fs::perms(0400));
    EXPECT_TRUE(holdsInAChild([&] {
        return (geteuid() != 0 || setuid(65534) == 0) && !write(kOld) &&
               platform::writeFile(folder_.path() + "other", kOld);
    }));
    EXPECT_EQ(contentsOf(file_), kNew);
    EXPECT_EQ(contentsOf(folder_.path() + "other"), kOld);
    EXPECT_EQ(folder_.entryCount(), 2);
}

TEST_F(WrittenFile, ReplacesNothingButFiles) {
    fs::create_directory(folder_.path() + "folder");
    ASSERT_EQ(mkfifo((folder_.path() + "pipe").c_str(), 0666), 0);
    fs::create_symlink("/dev/null", folder_.path() + "device");
    fs::create_symlink("loop", folder_.path() + "loop");
    for (const char* const name : {"folder", "pipe", "device", "loop", "missing/file", "", "."}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(platform::writeFile(folder_.path() + name, kNew));
    }
    writeOld(file_);
    EXPECT_FALSE(platform::writeFile(file_ + "/below", kNew));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(folder_.entryCount(), 5);
}

TEST_F(WrittenFile, IsMadeInTheCurrentFolderFromABareName) {
    const fs::path before = fs::current_path();
    fs::current_path(folder_.path());
    EXPECT_TRUE(platform::writeFile("file", kNew));
    fs::current_path(before);
    EXPECT_EQ(contentsOf(file_), kNew);
}

// Runs the actions in parallel child processes. Returns whether all returned true.
bool allAtOnce(const std::vector<std::function<bool()>>& actions) {
    std::vector<pid_t> processes;
    for (const auto& action : actions) {
        processes.push_back(fork());
        if (processes.back() == 0) _exit(action() ? 0 : 1);
    }
    bool all = true;
    for (const pid_t process : processes) {
        int status = 0;
        waitpid(process, &status, 0);
        all = all && status == 0;
    }
    return all;
}

TEST_F(WrittenFile, IsWholeWhoeverElseWritesIt) {
    constexpr int kRounds = 100;
    writeOld(file_);
    const auto writer = [&](char letter) {
        return [this, letter] {
            for (int i = 1; i <= kRounds; ++i) {
                if (!write(std::string(1000 + 5 * i, letter))) return false;
                usleep(500);
            }
            return true;
        };
    };
    const auto reader = [&] {
        for (int i = 0; i < 10 * kRounds; ++i) {
            const auto contents = contentsOf(file_);
            if (!contents || contents->size() < 1000) return false;
            if (contents->find_first_not_of(contents->front()) != std::string::npos) return false;
        }
        return true;
    };
    EXPECT_TRUE(allAtOnce({writer('a'), writer('b'), writer('c'), reader}));
    EXPECT_EQ(contentsOf(file_)->size(), 1000u + 5 * kRounds);
    EXPECT_EQ(folder_.entryCount(), 1);
}

TEST(SettingsFile, LosesNothingToAnotherWriter) {
    constexpr int kRounds = 80;
    const TemporaryFolder base;
    const platform::ScopedFolders folders("", base.path());
    const auto writer = [](const char* name) {
        return [=] {
            const platform::SettingsStore settings("Tembrilon", "Quarzel Strings");
            for (int i = 1; i <= kRounds; ++i) {
                if (!settings.write(name, std::to_string(i))) return false;
                if (settings.read(name) != std::to_string(i)) return false;
                usleep(500);
            }
            return true;
        };
    };
    EXPECT_TRUE(allAtOnce({writer("SkinName"), writer("Zoom")}));
    const platform::SettingsStore settings("Tembrilon", "Quarzel Strings");
    EXPECT_EQ(settings.read("SkinName"), std::to_string(kRounds));
    EXPECT_EQ(settings.read("Zoom"), std::to_string(kRounds));
    // A file that exists but cannot be read loses nothing.
    const std::string file = base.path() + "Tembrilon/Quarzel Strings/settings";
    fs::resize_file(file, 2 << 20);
    EXPECT_FALSE(settings.write("SkinName", "Day"));
    EXPECT_EQ(fs::file_size(file), 2u << 20);
}

}  // namespace
