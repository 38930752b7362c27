// Large blocks come from the system itself: of the C library's, one that was used before would have
// to be zeroed from end to end.
#include "platform/memory_pages.h"

#include <cstdlib>

#include <sys/mman.h>

namespace platform {
namespace {

constexpr std::size_t kLarge = std::size_t{1} << 18;

}  // namespace

void* takeZeroedMemory(std::size_t bytes) {
    if (bytes < kLarge) return std::calloc(bytes, 1);
    void* const memory =
        mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : memory;
}

void giveMemoryBack(void* memory, std::size_t bytes) {
    if (bytes < kLarge) return std::free(memory);
    munmap(memory, bytes);
}

void expectFilled(void* memory, std::size_t bytes) {
#ifdef MADV_HUGEPAGE
    if (bytes >= kLarge) madvise(memory, bytes, MADV_HUGEPAGE);
#else
    static_cast<void>(memory);
    static_cast<void>(bytes);
#endif
}

}  // namespace platform
