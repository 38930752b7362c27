// Tells threads apart without any cost.
#pragma once

#include <cstdint>

namespace platform {

// The calling thread's ID, never 0. It may be reused after the thread has ended. Unlike
// std::this_thread::get_id, this allocates nothing, not even on the first call by a foreign thread.
std::uintptr_t currentThreadId();

}  // namespace platform
