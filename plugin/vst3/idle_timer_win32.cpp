// The timer of a window that nobody sees.
#include <utility>

#include <windows.h>

#include "plugin/vst3/idle_timer.h"

namespace vst3 {

struct IdleTimer::System {
    HWND window = nullptr;
    std::shared_ptr<std::function<void()>> tick;
};

namespace {

void CALLBACK onTimer(HWND, UINT, UINT_PTR id, DWORD) {
    // Held while it runs: it may end the timer.
    const auto tick = *reinterpret_cast<std::shared_ptr<std::function<void()>>*>(id);
    (*tick)();
}

}  // namespace

IdleTimer::IdleTimer(FUnknown*, int milliseconds, std::function<void()> tick) {
    const HWND window = CreateWindowExA(0, "STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        nullptr, nullptr);
    if (!window) return;
    system_ = std::make_unique<System>(
        System{window, std::make_shared<std::function<void()>>(std::move(tick))});
    SetTimer(window, reinterpret_cast<UINT_PTR>(&system_->tick), static_cast<UINT>(milliseconds),
             onTimer);
}

// What is left in the queue goes with the window.
IdleTimer::~IdleTimer() {
    if (system_) DestroyWindow(system_->window);
}

}  // namespace vst3
