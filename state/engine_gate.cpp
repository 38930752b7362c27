// Ownership of the engine by compare and exchange.
#include "state/engine_gate.h"

#include "platform/thread_id.h"

namespace state {

bool EngineGate::take(Owner owner) {
    Owner expected = Owner::kNobody;
    return owner_.compare_exchange_strong(expected, owner);
}

bool EngineGate::beginBlock() {
    renderer_.store(platform::currentThreadId(), std::memory_order_relaxed);
    return take(Owner::kRenderer);
}

void EngineGate::endBlock() {
    owner_.store(Owner::kNobody, std::memory_order_release);
}

void EngineGate::expectNoBlocks() {
    renderer_.store(kNoThread, std::memory_order_relaxed);
}

EngineGate::Change::Change(EngineGate& gate) : gate_(gate), kind_(Kind::kRefused) {
    const std::uintptr_t renderer = gate.renderer_.load(std::memory_order_relaxed);
    const bool onRenderer = renderer == platform::currentThreadId();
    if (!onRenderer && renderer != kNoThread) return;
    if (gate.take(Owner::kChange)) {
        kind_ = Kind::kOwner;
    } else if (onRenderer && gate.owner_.load(std::memory_order_relaxed) == Owner::kRenderer) {
        kind_ = Kind::kWithinBlock;
    }
}

EngineGate::Change::~Change() {
    // Sequentially consistent: the owner looks for new requests after this.
    if (kind_ == Kind::kOwner) gate_.owner_.store(Owner::kNobody);
}

}  // namespace state
