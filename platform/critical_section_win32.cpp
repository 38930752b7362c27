// CriticalSection on Windows: a CRITICAL_SECTION, which is recursive by nature.
#include "platform/critical_section.h"

#include <windows.h>

namespace platform {

struct CriticalSection::Native {
    CRITICAL_SECTION section;
};

CriticalSection::CriticalSection() : native_(std::make_unique<Native>()) {
    InitializeCriticalSection(&native_->section);
}

CriticalSection::~CriticalSection() {
    DeleteCriticalSection(&native_->section);
}

void CriticalSection::lock() {
    EnterCriticalSection(&native_->section);
}
void CriticalSection::unlock() {
    LeaveCriticalSection(&native_->section);
}

}  // namespace platform
