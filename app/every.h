// Tells when a periodic task is due.
#pragma once

#include <chrono>

namespace app {

class Every {
  public:
    using Clock = std::chrono::steady_clock;

    explicit Every(Clock::duration interval) : interval_(interval) {}

    bool isDue() {
        const auto now = Clock::now();
        if (now < next_) return false;
        next_ = now + interval_;
        return true;
    }
    // Makes it due at once.
    void hurry() { next_ = {}; }

  private:
    Clock::duration interval_;
    Clock::time_point next_;
};

}  // namespace app
