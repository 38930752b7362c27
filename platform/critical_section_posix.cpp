// CriticalSection on POSIX systems: a recursive mutex.
#include "platform/critical_section.h"

#include <mutex>

namespace platform {

struct CriticalSection::Native {
    std::recursive_mutex mutex;
};

CriticalSection::CriticalSection() : native_(std::make_unique<Native>()) {}
CriticalSection::~CriticalSection() = default;

void CriticalSection::lock() {
    native_->mutex.lock();
}
void CriticalSection::unlock() {
    native_->mutex.unlock();
}

}  // namespace platform
