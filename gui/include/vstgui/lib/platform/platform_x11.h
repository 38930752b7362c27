// The run loop that a host may pass to a frame on X11. The layer does not use it, because
// CFrame::idle serves the window.
#pragma once

#include "gui/base/reference.h"
#include "gui/views/frame.h"

#include <cstdint>

namespace VSTGUI::X11 {

class IEventHandler {
  public:
    virtual ~IEventHandler() noexcept = default;
    virtual void onEvent() = 0;
};

class ITimerHandler {
  public:
    virtual ~ITimerHandler() noexcept = default;
    virtual void onTimer() = 0;
};

class IRunLoop : virtual public IReference {
  public:
    virtual bool registerEventHandler(int fd, IEventHandler* handler) = 0;
    virtual bool unregisterEventHandler(IEventHandler* handler) = 0;
    virtual bool registerTimer(uint64_t milliseconds, ITimerHandler* handler) = 0;
    virtual bool unregisterTimer(ITimerHandler* handler) = 0;
};

class FrameConfig : public IPlatformFrameConfig {
  public:
    SharedPointer<IRunLoop> runLoop;
};

}  // namespace VSTGUI::X11
