// The built DLL on Windows: messages, files, registry.
#include <algorithm>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include <windows.h>

#include "platform/file.h"
#include "platform/folders.h"
#include "tests/plugin/vst2/plugin_under_test.h"
#include "tests/support/message_box_user.h"

namespace {

TEST(WindowsPlugin, RefusesChunksOfAnotherSizeWithABox) {
    const TestHost host;
    const PluginLibrary library;
    PluginInstance plugin(library.entry());
    const struct {
        int isPreset;
        int size;
        const char* text;
    } rows[] = {{0, 26087, "Can't load bank, wrong file size! [OK]"},
                {1, 193, "Can't load preset, wrong file size! [OK]"}};
    for (const auto& row : rows) {
        std::string chunk(26088, '\0');
        std::string seen;
        std::thread user([&] { seen = dismissMessageBox("Error!"); });
        EXPECT_EQ(plugin.dispatch(effSetChunk, row.isPreset, row.size, chunk.data()), 1);
        user.join();
        EXPECT_EQ(seen, row.text);
    }
}

TEST(WindowsPlugin, WritesTheControllerMapToTheRoamingFolder) {
    const auto roaming = platform::applicationDataFolder();
    ASSERT_TRUE(roaming);
    const std::string path = *roaming + "\\Quarzel Studio 9\\Quarzel Strings\\Pluginccmap.bin";
    const std::string bindings = std::string(4, '\x07') + std::string(164, '\xFF');
    platform::writeFile(path, "");
    {
        const TestHost host;
        const PluginLibrary library;
        PluginInstance first(library.entry());  // makes the folders
        ASSERT_TRUE(platform::writeFile(path, bindings));
        PluginInstance second(library.entry());
        ASSERT_TRUE(DeleteFileA(path.c_str()));
    }
    EXPECT_EQ(platform::readFile(path, 1000), bindings);
}

// The number of blocks in use in all heaps of the process.
int heapBlocks() {
    HANDLE heaps[64];
    const DWORD count = std::min(GetProcessHeaps(64, heaps), DWORD{64});
    int blocks = 0;
    for (DWORD i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heaps[i], &entry)) {
            blocks += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
        }
    }
    return blocks;
}

struct FirstBlock {
    AEffect* record;
    int before;
    int after;
};

DWORD WINAPI renderFirstBlock(void* argument) {
    FirstBlock& block = *static_cast<FirstBlock*>(argument);
    float left[64], right[64];
    float* outputs[] = {left, right};
    block.before = heapBlocks();
    block.record->processReplacing(block.record, nullptr, outputs, 64);
    block.after = heapBlocks();
    return 0;
}

// The C++ library does not know the host's threads and would allocate if asked about one.
TEST(WindowsPlugin, RendersOnAHostsOwnThreadWithoutTheHeap) {
    const TestHost host;
    const PluginLibrary library;
    PluginInstance plugin(library.entry());
    FirstBlock block = {plugin.record(), 0, 1};
    const HANDLE thread = CreateThread(nullptr, 0, renderFirstBlock, &block, 0, nullptr);
    ASSERT_EQ(WaitForSingleObject(thread, 10000), WAIT_OBJECT_0);
    CloseHandle(thread);
    EXPECT_GT(block.before, 0);
    EXPECT_EQ(block.after, block.before);
}

}  // namespace
