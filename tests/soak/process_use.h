// What this process holds of the system at a moment.
#pragma once

#include <cstddef>

namespace soak {

struct ProcessUse {
    std::size_t heapBytes;      // handed out by the C library's heap
    std::size_t residentBytes;  // of the process, in memory
    int openFiles;
};

ProcessUse processUse();

}  // namespace soak
