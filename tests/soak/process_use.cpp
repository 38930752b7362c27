// Queries the C library and the kernel.
#include "tests/soak/process_use.h"

#include <fstream>

#include <malloc.h>
#include <unistd.h>

#include "platform/file.h"

namespace soak {

ProcessUse processUse() {
    const struct mallinfo2 heap = mallinfo2();
    std::size_t total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return {heap.uordblks + heap.hblkhd, resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)),
            static_cast<int>(platform::folderEntries("/proc/self/fd").size())};
}

}  // namespace soak
