// Requests, and who carries them out.
#include "state/instrument.h"

#include <algorithm>
#include <utility>

#include "engine/engine.h"

namespace state {

namespace {

constexpr std::uint64_t bit(int n) {
    return std::uint64_t{1} << n;
}

// After so many halvings the remaining distance is below a float's precision.
constexpr int kMostHighPassMoves = 24;

}  // namespace

// What is due before a segment: requests of other threads, then the block's own events.
class Instrument::RequestsFirst : public engine::EventSource {
  public:
    RequestsFirst(Instrument& instrument, engine::EventSource& events)
        : instrument_(instrument), events_(events) {}

    int dispatchUpTo(int frame) override {
        instrument_.carryOutPending();
        return events_.dispatchUpTo(frame);
    }

  private:
    Instrument& instrument_;
    engine::EventSource& events_;
};

Instrument::Instrument(double sampleRate)
    : Instrument(std::make_unique<engine::Engine>(sampleRate)) {}

Instrument::Instrument(std::unique_ptr<engine::SoundEngine> engine)
    : engine_(std::move(engine)), sampleRate_(engine_->sampleRate()) {}

float Instrument::value(int index) const {
    if (index < 0 || index > kNumParams) return 0.0f;
    // One index past the table is admitted: kept.
    return index == kNumParams ? bank_.valuePastTable(program()) : bank_.value(program(), index);
}

void Instrument::setValue(int index, float value) {
    if (index == kVoiceCountParam) {
        voices_.store(voiceCount(value), std::memory_order_relaxed);
        demand(kChangeVoices);
    } else if (isParameter(index)) {
        bank_.setValue(program(), index, value);
        if (index == kHP) highPassMoves_.fetch_add(1, std::memory_order_relaxed);
        demand(bit(index));
    }
}

bool Instrument::setProgram(int program) {
    if (!isProgram(program) || pushing_.load(std::memory_order_acquire)) return false;
    program_.store(program, std::memory_order_relaxed);
    demand(kPushProgram);
    return true;
}

void Instrument::setSampleRate(double rate) {
    if (!engine::isAcceptedRate(rate)) return;
    sampleRate_.store(rate, std::memory_order_relaxed);
    demand(kChangeRate);
}

bool Instrument::render(float* left, float* right, int frames, engine::EventSource& events) {
    if (!gate_.beginBlock()) return false;
    carryOutPending();
    RequestsFirst source(*this, events);
    engine_->render(left, right, frames, source);
    gate_.endBlock();
    return true;
}

void Instrument::stopRendering() {
    gate_.expectNoBlocks();
    demand(0);
}

// A request that is refused ownership is left for the owner; the owner may just have looked, so
// the asking thread tries again until either of them has seen it.
void Instrument::demand(std::uint64_t request) {
    requests_.fetch_or(request);
    while (requests_.load() != 0) {
        const EngineGate::Change change(gate_);
        if (!change.granted()) return;
        carryOutPending();
    }
}

void Instrument::carryOutPending() {
    if (requests_.load(std::memory_order_relaxed) == 0) return;
    carryOut(requests_.exchange(0, std::memory_order_acquire));
}

void Instrument::carryOut(std::uint64_t requests) {
    if (requests & kChangeRate) engine_->setSampleRate(sampleRate_.load(std::memory_order_relaxed));
    if (requests & kPushProgram) pushProgram();
    if (requests & kChangeVoices) engine_->setPolyphony(voices_.load(std::memory_order_relaxed));
    for (int index = 0; index < kNumParams; ++index) {
        if (!(requests & bit(index))) continue;
        int moves = 1;
        if (index == kHP) {
            moves =
                std::min(highPassMoves_.exchange(0, std::memory_order_relaxed), kMostHighPassMoves);
        }
        for (; moves > 0; --moves) apply(index);
    }
}

void Instrument::apply(int index) {
    parameter(index).apply(*engine_, valueForEngine(index));
}

float Instrument::valueForEngine(int index) const {
    return engineValue(bank_.value(program(), index));
}

void Instrument::pushProgram() {
    pushing_.store(true, std::memory_order_release);
    engine_->setSampleRate(engine_->sampleRate());
    engine_->reset();
    engine_->phaser().setDefaults();
    engine_->reverb().set({valueForEngine(kMix), valueForEngine(kSize), valueForEngine(kBrite),
                           valueForEngine(kSpring)});
    for (int index = 0; index < kNumParams; ++index) apply(index);
    pushing_.store(false, std::memory_order_release);
}

}  // namespace state
