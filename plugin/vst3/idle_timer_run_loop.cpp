// The timer by the host's event loop.
#include <utility>

#include "plugin/vst3/controller.h"
#include "plugin/vst3/idle_timer.h"
#include "plugin/vst3/reference.h"

namespace vst3 {

namespace {

// The host may keep it longer than the timer lives.
class Handler final : public ITimerHandler {
  public:
    explicit Handler(std::function<void()> tick) : tick_(std::move(tick)) {}

    void stop() { tick_ = nullptr; }

    void VST3_CALL onTimer() override {
        const auto self = shared(this);
        const auto tick = tick_;  // it may stop the timer
        if (tick) tick();
    }
    tresult VST3_CALL queryInterface(const TUID iid, void** object) override {
        *object = nullptr;
        const bool known =
            answers<ITimerHandler>(this, iid, object) || answers<FUnknown>(this, iid, object);
        return known ? kResultOk : kNoInterface;
    }
    uint32 VST3_CALL addRef() override { return references_.add(); }
    uint32 VST3_CALL release() override {
        const uint32 left = references_.remove();
        if (left == 0) delete this;
        return left;
    }

  private:
    std::function<void()> tick_;
    ReferenceCount references_;
};

}  // namespace

struct IdleTimer::System {
    Ref<IRunLoop> loop;
    Ref<Handler> handler;
};

IdleTimer::IdleTimer(FUnknown* host, int milliseconds, std::function<void()> tick) {
    auto loop = query<IRunLoop>(host);
    if (!loop) return;
    Ref<Handler> handler(new Handler(std::move(tick)));
    if (loop->registerTimer(handler.get(), static_cast<uint64>(milliseconds)) != kResultOk) return;
    system_ = std::make_unique<System>(System{std::move(loop), std::move(handler)});
}

IdleTimer::~IdleTimer() {
    if (!system_) return;
    system_->handler->stop();
    system_->loop->unregisterTimer(system_->handler.get());
}

}  // namespace vst3
