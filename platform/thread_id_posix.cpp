// The address of the thread's record in the C library.
#include "platform/thread_id.h"

#include <pthread.h>

namespace platform {

std::uintptr_t currentThreadId() {
    return static_cast<std::uintptr_t>(pthread_self());
}

}  // namespace platform
