// The built DLL on Windows: its heap.
#include <algorithm>

#include <gtest/gtest.h>

#include <windows.h>

#include "tests/plugin/vst2/plugin_under_test.h"

namespace {

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
