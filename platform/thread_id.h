// Tells threads apart, at no cost.
#pragma once

#include <cstdint>

namespace platform {

// Of the calling thread, never 0; another thread may get it when this one has ended. Unlike
// std::this_thread::get_id it takes no memory, not even for the first call of a foreign thread.
std::uintptr_t currentThreadId();

}  // namespace platform
