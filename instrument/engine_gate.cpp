// Ownership of the engine by compare-and-exchange.
#include "instrument/engine_gate.h"

#include "platform/thread_id.h"

namespace instrument {

std::uint64_t EngineGate::onThisThread(Owner owner) {
    return std::uint64_t{platform::currentThreadId()} << kOwnerBits | owner;
}

bool EngineGate::beginBlock() {
    std::uint64_t seen = state_.load();
    for (;;) {
        const auto owner = static_cast<Owner>(seen & kOwnerMask);
        if (owner == kRenderer) return false;
        // A running change keeps the engine; this thread becomes the renderer.
        const std::uint64_t mine = onThisThread(owner == kNobody ? kRenderer : owner);
        if (state_.compare_exchange_weak(seen, mine)) return owner == kNobody;
    }
}

void EngineGate::endBlock() {
    release();
}

void EngineGate::expectNoBlocks() {
    state_.fetch_and(kOwnerMask);
}

bool EngineGate::withinBlock() const {
    return state_.load(std::memory_order_relaxed) == onThisThread(kRenderer);
}

bool EngineGate::rendersHere() const {
    return (state_.load() & ~kOwnerMask) == onThisThread(kNobody);
}

bool EngineGate::beginChange() {
    std::uint64_t seen = state_.load();
    while (seen == kNobody || seen == onThisThread(kNobody)) {
        if (state_.compare_exchange_weak(seen, seen | kChange)) return true;
    }
    return false;
}

EngineGate::Change::Change(EngineGate& gate) : gate_(gate), granted_(gate.beginChange()) {}

EngineGate::Change::~Change() {
    if (granted_) gate_.release();
}

}  // namespace instrument
