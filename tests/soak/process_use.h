// The resources that this process holds now.
#pragma once

#include <cstddef>

namespace soak {

struct ProcessUse {
    std::size_t heapBytes;      // in use in the C library's heap
    std::size_t residentBytes;  // of the process, in memory
    int openFiles;
};

ProcessUse processUse();

}  // namespace soak
