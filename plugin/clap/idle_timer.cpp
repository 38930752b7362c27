// The host's timer, or a thread in its place.
#include "plugin/clap/idle_timer.h"

#include <chrono>

namespace clap {

IdleTimer::IdleTimer(const Host& host, const HostTimerSupport* support, uint32_t milliseconds)
    : host_(host), support_(support) {
    Id id = kInvalidId;
    if (support_ && support_->register_timer && support_->unregister_timer &&
        support_->register_timer(&host_, milliseconds, &id)) {
        id_ = id;
    } else {
        thread_ = std::thread([this, milliseconds] { ask(milliseconds); });
    }
}

IdleTimer::~IdleTimer() {
    if (id_) support_->unregister_timer(&host_, *id_);
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    ending_.notify_one();
    thread_.join();
}

void IdleTimer::ask(uint32_t milliseconds) {
    std::unique_lock lock(mutex_);
    const std::chrono::milliseconds period(milliseconds);
    while (!ending_.wait_for(lock, period, [this] { return ends_; })) {
        asked_ = true;
        host_.request_callback(&host_);
    }
}

}  // namespace clap
