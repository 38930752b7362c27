// Repeating timers on the user-interface thread, and the queue in which an open frame keeps them.
#pragma once

#include "gui/base/reference.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace VSTGUI {

class TimerQueue;

// Calls back every fire time until it is stopped; releasing its last reference stops it. Runs only
// while a frame is open: one started earlier never fires.
class CVSTGUITimer : public AtomicReferenceCounted {
  public:
    using CallbackFunc = std::function<void(CVSTGUITimer*)>;

    explicit CVSTGUITimer(const CallbackFunc& callback, uint32_t fireTime = 100,
                          bool doStart = true);
    explicit CVSTGUITimer(CallbackFunc&& callback, uint32_t fireTime = 100, bool doStart = true);
    ~CVSTGUITimer() noexcept override { stop(); }

    bool start();  // false if it runs already or no frame is open
    bool stop();   // false if it does not run
    bool setFireTime(uint32_t milliseconds);
    uint32_t getFireTime() const { return fireTime_; }

  private:
    friend class TimerQueue;
    CallbackFunc callback_;
    uint32_t fireTime_;  // in milliseconds, at least 1
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
    // The timers left go on with another open frame: the one that started them may be still open.
    void close();
    // From now on new timers join this queue.
    void makeCurrent();
    // Calls every timer that is due; callbacks may start and stop any timer.
    void callDue();

  private:
    friend class CVSTGUITimer;
    void add(CVSTGUITimer* timer);
    bool contains(const CVSTGUITimer* timer) const;

    std::vector<CVSTGUITimer*> running_;
};

}  // namespace VSTGUI
