// Zeroed memory from the system, which hands out large blocks page by page as they are touched.
#pragma once

#include <cstddef>

namespace platform {

// Returns null if there is none.
void* takeZeroedMemory(std::size_t bytes);
// `bytes` as they were asked for.
void giveMemoryBack(void* memory, std::size_t bytes);
// Says that all of a block is about to be used, so that larger pages may hold it.
void expectFilled(void* memory, std::size_t bytes);

}  // namespace platform
