// Windows' C library takes large blocks from the system as they are, and a page has nothing but the
// heap.
#include "platform/memory_pages.h"

#include <cstdlib>

namespace platform {

void* takeZeroedMemory(std::size_t bytes) {
    return std::calloc(bytes, 1);
}

void giveMemoryBack(void* memory, std::size_t) {
    std::free(memory);
}

void expectFilled(void*, std::size_t) {}

}  // namespace platform
