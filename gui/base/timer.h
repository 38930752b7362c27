// Repeating timers on the user-interface thread, and the queue of timers that each open frame has.
#pragma once

#include "gui/base/reference.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace VSTGUI {

class TimerQueue;

// Calls back repeatedly, once per fire time, until it is stopped. Releasing the last reference
// stops it. A timer starts only while a frame is open.
class CVSTGUITimer : public AtomicReferenceCounted {
  public:
    using CallbackFunc = std::function<void(CVSTGUITimer*)>;

    explicit CVSTGUITimer(const CallbackFunc& callback, uint32_t fireTime = 100,
                          bool doStart = true);
    explicit CVSTGUITimer(CallbackFunc&& callback, uint32_t fireTime = 100, bool doStart = true);
    ~CVSTGUITimer() noexcept override { stop(); }

    bool start();  // false if it is running or no frame is open
    bool stop();   // false if it is not running
    bool setFireTime(uint32_t milliseconds);
    uint32_t getFireTime() const { return fireTime_; }

  private:
    friend class TimerQueue;
    CallbackFunc callback_;
    uint32_t fireTime_;  // milliseconds, at least 1
    uint64_t due_ = 0;
    TimerQueue* queue_ = nullptr;
};

// The running timers of one frame. A timer joins the queue of the frame served last.
class TimerQueue {
  public:
    TimerQueue() = default;
    TimerQueue(const TimerQueue&) = delete;
    TimerQueue& operator=(const TimerQueue&) = delete;
    ~TimerQueue() { close(); }

    void open() { makeCurrent(); }
    // Hands the remaining timers to another open frame, because their owner may still be open.
    void close();
    // Makes new timers join this queue.
    void makeCurrent();
    // Calls every timer that is due. Callbacks may start and stop any timer.
    void callDue();

  private:
    friend class CVSTGUITimer;
    void add(CVSTGUITimer* timer);
    bool contains(const CVSTGUITimer* timer) const;

    std::vector<CVSTGUITimer*> running_;
};

}  // namespace VSTGUI
