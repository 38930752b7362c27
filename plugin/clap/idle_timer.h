// Calls back on the main thread, again and again.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include "plugin/clap/extensions.h"

namespace clap {

// By the host's timer; for a host without one, by a thread that asks it for callbacks.
class IdleTimer {
  public:
    // `support` may be null.
    IdleTimer(const Host& host, const HostTimerSupport* support, uint32_t milliseconds);
    ~IdleTimer();
    IdleTimer(const IdleTimer&) = delete;
    IdleTimer& operator=(const IdleTimer&) = delete;

    // Whether the host's timer of this id is meant.
    bool isTimer(Id id) const { return id_ == id; }
    // Whether a callback is meant.
    bool takeCallback() { return asked_.exchange(false); }

  private:
    void ask(uint32_t milliseconds);

    const Host& host_;
    const HostTimerSupport* const support_;
    std::optional<Id> id_;  // of the host's timer

    std::atomic<bool> asked_{false};
    std::mutex mutex_;
    std::condition_variable ending_;
    bool ends_ = false;
    std::thread thread_;
};

}  // namespace clap
