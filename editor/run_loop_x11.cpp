// The event loop for all editor windows of this module on X11. Hosts only call idle, so pump() runs
// it from there.
#include <algorithm>
#include <chrono>
#include <vector>

#include <poll.h>

#include "editor/toolkit.h"
#include "vstgui/lib/platform/platform_x11.h"
#include "vstgui/lib/vstguiinit.h"
#include "vstgui/vstgui.h"

namespace editor {
namespace {

using Clock = std::chrono::steady_clock;

// A handler may unregister itself or another one while it runs.
class RunLoop final : public VSTGUI::X11::IRunLoop, public VSTGUI::AtomicReferenceCounted {
  public:
    bool registerEventHandler(int fd, VSTGUI::X11::IEventHandler* handler) override {
        events_.push_back({handler, fd});
        return true;
    }
    bool unregisterEventHandler(VSTGUI::X11::IEventHandler* handler) override {
        return remove(events_, handler);
    }
    bool registerTimer(uint64_t interval, VSTGUI::X11::ITimerHandler* handler) override {
        const auto time = std::chrono::milliseconds(interval);
        timers_.push_back({handler, time, Clock::now() + time});
        return true;
    }
    bool unregisterTimer(VSTGUI::X11::ITimerHandler* handler) override {
        return remove(timers_, handler);
    }

    void pump() {
        // Call the handler even when nothing can be read: events may already be queued.
        const auto events = events_;
        for (const Event& event : events) {
            pollfd state = {event.fd, POLLIN, 0};
            poll(&state, 1, 0);
            if (isRegistered(events_, event.handler)) event.handler->onEvent();
        }
        const auto now = Clock::now();
        const auto timers = timers_;
        for (const Timer& timer : timers) {
            if (timer.due > now || !isRegistered(timers_, timer.handler)) continue;
            restart(timer.handler, now);
            timer.handler->onTimer();
        }
    }

  private:
    struct Event {
        VSTGUI::X11::IEventHandler* handler;
        int fd;
    };
    struct Timer {
        VSTGUI::X11::ITimerHandler* handler;
        Clock::duration interval;
        Clock::time_point due;
    };

    template <typename Entry, typename Handler>
    static bool isRegistered(const std::vector<Entry>& entries, const Handler* handler) {
        return std::any_of(entries.begin(), entries.end(),
                           [handler](const Entry& entry) { return entry.handler == handler; });
    }

    template <typename Entry, typename Handler>
    static bool remove(std::vector<Entry>& entries, const Handler* handler) {
        const auto isThat = [handler](const Entry& entry) { return entry.handler == handler; };
        const auto end = std::remove_if(entries.begin(), entries.end(), isThat);
        const bool found = end != entries.end();
        entries.erase(end, entries.end());
        return found;
    }

    void restart(const VSTGUI::X11::ITimerHandler* handler, Clock::time_point now) {
        for (Timer& timer : timers_) {
            if (timer.handler == handler) timer.due = now + timer.interval;
        }
    }

    std::vector<Event> events_;
    std::vector<Timer> timers_;
};

// VSTGUI uses the first frame's loop for all frames, so the module has only one.
RunLoop& runLoop() {
    static const VSTGUI::SharedPointer<RunLoop> loop = VSTGUI::makeOwned<RunLoop>();
    return *loop.get();
}

}  // namespace

void Toolkit::setUp() {
    // Do not pass the module handle. With it, VSTGUI looks for a bundle around the library and
    // crashes if the library is only two folders below the root.
    VSTGUI::init(nullptr);
}

void Toolkit::tearDown() {
    VSTGUI::exit();
}

VSTGUI::IPlatformFrameConfig* Toolkit::frameConfig() {
    static VSTGUI::X11::FrameConfig config;
    config.runLoop = VSTGUI::SharedPointer<VSTGUI::X11::IRunLoop>(&runLoop());
    return &config;
}

void Toolkit::pump() {
    runLoop().pump();
}

}  // namespace editor
