// The system's thread ID.
#include "platform/thread_id.h"

#include <windows.h>

namespace platform {

std::uintptr_t currentThreadId() {
    return GetCurrentThreadId();
}

}  // namespace platform
