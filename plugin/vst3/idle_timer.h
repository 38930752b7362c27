// Calls back on the user-interface thread, again and again.
#pragma once

#include <functional>
#include <memory>

#include "plugin/vst3/base.h"

namespace vst3 {

class IdleTimer {
  public:
    // Linux: by the event loop that `host` offers, which may be null. Windows: by a timer of the
    // calling thread. What `tick` calls may end the timer.
    IdleTimer(FUnknown* host, int milliseconds, std::function<void()> tick);
    ~IdleTimer();
    IdleTimer(const IdleTimer&) = delete;
    IdleTimer& operator=(const IdleTimer&) = delete;

    // False: the host offers no event loop.
    bool runs() const { return system_ != nullptr; }

  private:
    struct System;
    std::unique_ptr<System> system_;
};

}  // namespace vst3
