// Tests of reading, writing and binding in the controller map.
#include "state/controller_map.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "platform/file.h"
#include "platform/folders.h"
#include "tests/support/temporary_folder.h"
#ifndef _WIN32
#include <sys/resource.h>
#endif

namespace {

using state::ControllerMap;

constexpr const char* kInDataFolder = "Quarzel Studio 9/Quarzel Strings/Pluginccmap.bin";

struct Folders {
    TemporaryFolder module;
    TemporaryFolder applicationData;
    platform::ScopedFolders scope{module.path(), applicationData.path()};
};

TEST(ControllerMap, IsUnboundWithoutAFile) {
    const Folders folders;
    ControllerMap map;
    map.bind(3, 7);
    map.load();
    for (int i = 0; i < state::kNumParams; ++i) {
        EXPECT_EQ(map.controller(i), ControllerMap::kUnbound);
    }
}

TEST(ControllerMap, KeepsItsBindingsInTheDataFolder) {
    const Folders folders;
    ControllerMap map;
    map.bind(state::kPan, 20);
    map.bind(state::kMix, 20);
    map.bind(state::kSpring, 127);
    map.save();
    const std::string path = folders.applicationData.path() + kInDataFolder;
    const auto bytes = platform::readFile(path, 1000);
    ASSERT_TRUE(bytes);
    ASSERT_EQ(bytes->size(), 168u);
    EXPECT_EQ(bytes->substr(0, 8), std::string("\xFF\xFF\xFF\xFF\x14\0\0\0", 8));
    EXPECT_FALSE(platform::fileExists(folders.module.path() + "Pluginccmap.bin"));

    ControllerMap loaded;
    loaded.load();
    EXPECT_EQ(loaded.controller(state::kPan), 20);
    EXPECT_EQ(loaded.controller(state::kMix), 20);
    EXPECT_EQ(loaded.controller(state::kSpring), 127);
    EXPECT_EQ(loaded.controller(state::kVolume), ControllerMap::kUnbound);
    // No temporary file remains.
    const auto entries =
        std::filesystem::directory_iterator(std::filesystem::path(path).parent_path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST(ControllerMap, IsWrittenOnceForAChange) {
    const Folders folders;
    const std::string path = folders.applicationData.path() + kInDataFolder;
    ControllerMap map;
    map.load();
    map.saveIfChanged();
    EXPECT_FALSE(platform::fileExists(path));
    map.bind(state::kPan, 20);
    map.saveIfChanged();
    EXPECT_TRUE(platform::fileExists(path));
    std::filesystem::remove(path);
    map.saveIfChanged();
    EXPECT_FALSE(platform::fileExists(path));
}

// Another process, or another of our plug-ins in this one, may save in between.
TEST(ControllerMap, WritesOnlyWhatItChanged) {
    const Folders folders;
    const std::string path = folders.applicationData.path() + kInDataFolder;
    ControllerMap first, second, idle;
    first.bind(state::kPan, 20);
    first.bind(state::kMix, 21);
    first.save();
    for (ControllerMap* map : {&first, &second, &idle}) map->load();
    first.bind(state::kPan, ControllerMap::kUnbound);
    second.bind(state::kSpring, 30);
    second.save();
    first.save();
    ControllerMap kept;
    kept.load();
    EXPECT_EQ(kept.controller(state::kPan), ControllerMap::kUnbound);
    EXPECT_EQ(kept.controller(state::kMix), 21);
    EXPECT_EQ(kept.controller(state::kSpring), 30);

    const auto longAgo = std::filesystem::last_write_time(path) - std::chrono::hours(1);
    std::filesystem::last_write_time(path, longAgo);
    for (ControllerMap* map : {&first, &idle, &kept}) map->save();
    EXPECT_EQ(std::filesystem::last_write_time(path), longAgo);
}

TEST(ControllerMap, ReadsDamagedFilesWithinTheirBytes) {
    const Folders folders;
    for (const std::size_t size : {0, 1, 3, 167, 169, 4 << 20}) {
        SCOPED_TRACE(size);
        folders.module.write("Pluginccmap.bin", std::string(size, '\x7F'));
        ControllerMap map;
        map.load();
        EXPECT_EQ(map.controller(41), size < 165 ? 0 : size < 168 ? 0x7F7F7F : 0x7F7F7F7F);
    }
}

TEST(ControllerMap, IsNotHarmedByAFailedWrite) {
    const Folders folders;
    ControllerMap map;
    map.bind(1, 33);
    map.save();
    const std::string path = folders.applicationData.path() + kInDataFolder;
    const auto before = platform::readFile(path, 1000);
    // A folder blocks the rename.
    std::filesystem::remove(path);
    std::filesystem::create_directories(path + "/inside");
    map.save();
    EXPECT_TRUE(std::filesystem::is_directory(path));
    std::filesystem::remove_all(path);
    map.save();
    EXPECT_EQ(platform::readFile(path, 1000), before);
}

#ifndef _WIN32
TEST(ControllerMap, FollowsNoLinkInTheCurrentFolder) {
    const TemporaryFolder current, other;
    const CurrentFolder scope(current.path());
    const platform::ScopedFolders noFolders("", "");
    const std::string file = "Pluginccmap.bin", victim = other.path() + "victim";
    const std::string before(168, '\x05');
    for (const bool there : {true, false}) {
        SCOPED_TRACE(there);
        if (there) other.write("victim", before);
        std::filesystem::create_symlink(victim, file);
        ControllerMap map;
        map.load();
        EXPECT_EQ(map.controller(state::kPan), ControllerMap::kUnbound);
        map.bind(state::kPan, 20);
        map.save();
        EXPECT_EQ(platform::readFile(victim, 1000), there ? std::optional(before) : std::nullopt);
        std::filesystem::remove(file);
        std::filesystem::remove(victim);
        // The binding is saved after all.
        map.save();
        ControllerMap kept;
        kept.load();
        EXPECT_EQ(kept.controller(state::kPan), 20);
        std::filesystem::remove(file);
    }
}

// As when the process runs out of file handles: the player's bindings must survive.
TEST(ControllerMap, LeavesAFileThatItCouldNotRead) {
    const Folders folders;
    ControllerMap map;
    map.bind(state::kPan, 20);
    map.save();
    {
        rlimit limit = {};
        getrlimit(RLIMIT_NOFILE, &limit);
        const rlimit none = {0, limit.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
        map.load();
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    EXPECT_EQ(map.controller(state::kPan), ControllerMap::kUnbound);
    map.save();
    ControllerMap other;
    other.load();
    EXPECT_EQ(other.controller(state::kPan), 20);
    map.bind(state::kMix, 7);  // new bindings count
    map.save();
    other.load();
    EXPECT_EQ(other.controller(state::kMix), 7);
    EXPECT_EQ(other.controller(state::kPan), 20);
}
#endif

TEST(LearnSlot, IsTakenOnce) {
    state::LearnSlot slot;
    EXPECT_EQ(slot.take(), state::LearnSlot::kNone);
    slot.arm(12);
    EXPECT_EQ(slot.armed(), 12);
    EXPECT_EQ(slot.take(), 12);
    EXPECT_EQ(slot.take(), state::LearnSlot::kNone);
}

}  // namespace
