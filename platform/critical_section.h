// A recursive lock for short hand-overs between threads; works with std::lock_guard.
#pragma once

#include <memory>

namespace platform {

class CriticalSection {
  public:
    CriticalSection();
    ~CriticalSection();
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    void lock();
    void unlock();

  private:
    struct Native;
    std::unique_ptr<Native> native_;
};

}  // namespace platform
