// Repeating timers on the user-interface thread.
#include "gui/base/timer.h"
#include "gui/base/clock.h"

#include <algorithm>
#include <utility>

namespace VSTGUI {
namespace {

// The queues of the open frames. The one served last is at the back.
std::vector<TimerQueue*>& openQueues() {
    static std::vector<TimerQueue*> queues;
    return queues;
}

template <typename Value>
void eraseFrom(std::vector<Value>& values, Value value) {
    values.erase(std::remove(values.begin(), values.end(), value), values.end());
}

}  // namespace

CVSTGUITimer::CVSTGUITimer(const CallbackFunc& callback, uint32_t fireTime, bool doStart)
    : CVSTGUITimer(CallbackFunc(callback), fireTime, doStart) {}

CVSTGUITimer::CVSTGUITimer(CallbackFunc&& callback, uint32_t fireTime, bool doStart)
    : callback_(std::move(callback)), fireTime_(std::max(fireTime, 1u)) {
    if (doStart) start();
}

bool CVSTGUITimer::start() {
    if (queue_ || openQueues().empty()) return false;
    due_ = millisecondsNow() + fireTime_;
    openQueues().back()->add(this);
    return true;
}

bool CVSTGUITimer::stop() {
    if (!queue_) return false;
    eraseFrom(queue_->running_, this);
    queue_ = nullptr;
    return true;
}

bool CVSTGUITimer::setFireTime(uint32_t milliseconds) {
    fireTime_ = std::max(milliseconds, 1u);
    if (stop()) start();
    return true;
}

void TimerQueue::add(CVSTGUITimer* timer) {
    timer->queue_ = this;
    running_.push_back(timer);
}

bool TimerQueue::contains(const CVSTGUITimer* timer) const {
    return std::find(running_.begin(), running_.end(), timer) != running_.end();
}

void TimerQueue::makeCurrent() {
    if (!openQueues().empty() && openQueues().back() == this) return;
    eraseFrom(openQueues(), this);
    openQueues().push_back(this);
}

void TimerQueue::close() {
    eraseFrom(openQueues(), this);
    for (CVSTGUITimer* const timer : std::exchange(running_, {})) {
        timer->queue_ = nullptr;
        if (!openQueues().empty()) openQueues().back()->add(timer);
    }
}

void TimerQueue::callDue() {
    const uint64_t now = millisecondsNow();
    const auto atStart = running_;  // a callback may change the list
    for (CVSTGUITimer* const timer : atStart) {
        if (!contains(timer) || timer->due_ > now) continue;
        const auto alive = shared(timer);
        timer->due_ = now + timer->fireTime_;
        if (timer->callback_) timer->callback_(timer);
    }
}

}  // namespace VSTGUI
