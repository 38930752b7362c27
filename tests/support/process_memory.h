// The resources that this process holds, to detect growth.
#pragma once

#include <cstddef>

#ifdef _WIN32
#include <windows.h>

#include <psapi.h>
#else
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <malloc.h>
#endif

struct ProcessMemory {
    std::size_t bytes = 0;
    std::size_t handles = 0;      // open files or handles
    std::size_t mappedFiles = 0;  // mapped parts of files; 0 if unknown

    static ProcessMemory now();
};

#ifdef _WIN32
// Pages cached by the heap.
constexpr std::size_t kProcessMemoryNoise = 1 << 20;

inline ProcessMemory ProcessMemory::now() {
    PROCESS_MEMORY_COUNTERS counters = {};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    return {counters.PagefileUsage, handles, 0};
}
#else
// Memory that the dynamic linker keeps after loading and unloading a hundred libraries.
constexpr std::size_t kProcessMemoryNoise = 32 << 10;

inline ProcessMemory ProcessMemory::now() {
    const struct mallinfo2 heap = mallinfo2();
    std::ifstream maps("/proc/self/maps");
    std::size_t mapped = 0;
    for (std::string line; std::getline(maps, line);) mapped += line.find('/') != line.npos;
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return {heap.uordblks + heap.hblkhd,
            static_cast<std::size_t>(std::distance(files, std::filesystem::directory_iterator())),
            mapped};
}
#endif
