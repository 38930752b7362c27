// The system's number of the thread.
#include "platform/thread_id.h"

#include <windows.h>

namespace platform {

std::uintptr_t currentThreadId() {
    return GetCurrentThreadId();
}

}  // namespace platform
