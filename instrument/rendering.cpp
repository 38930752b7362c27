// Renders blocks: brings changes to the engine and plays each block's messages.
#include <algorithm>

#include "instrument/instrument.h"
#include "instrument/midi_messages.h"
#include "platform/thread_id.h"

namespace instrument {

namespace {
// After 24 halvings the remaining distance is below the precision of a float.
constexpr int kMostHighPassMoves = 24;
}  // namespace

void Instrument::setSampleRate(double rate) {
    if (!engine::isAcceptedRate(rate)) return;
    sampleRate_.store(rate, std::memory_order_relaxed);
    demand(kChangeRate);
}

void Instrument::resume() {
    engine_->forgetHeldNotes();
    events_.forget();
    keyPresses_.forget();
}

void Instrument::suspend() {
    engine_->forgetHeldNotes();
    gate_.expectNoBlocks();
    demand(0);
    events_.forget();
}

void Instrument::render(float* left, float* right, int frames) {
    keyPresses_.moveTo(events_);
    events_.beginBlock();
    const bool playable = left && right && frames > 0 && !starting_;
    if (!playable || !gate_.beginBlock()) {
        if (left && frames > 0) std::fill_n(left, frames, 0.0f);
        if (right && frames > 0) std::fill_n(right, frames, 0.0f);
        events_.postpone();
        return;
    }
    carryOutPending();
    letGoOfBoundControllers();
    engine_->beginBlock();
    for (int start = 0; start < frames;) {
        if (start > 0) carryOutPending();
        playEventsUpTo(start);
        start += engine_->render(left + start, right + start, events_.nextFrame(frames) - start);
    }
    engine_->endBlock(left, right, frames);
    gate_.endBlock();
    events_.endBlock();
}

// A thread that is refused ownership leaves its request to the owner. A thread that was granted
// ownership looks again after releasing it, because another thread may have been refused meanwhile.
// The rendering thread does not repeat: it looks before its next segment anyway, and requests from
// others must not hold it up.
void Instrument::demand(std::uint64_t requests) {
    if (gate_.withinBlock()) return carryOut(requests);
    requests_.mark(requests);
    do {
        const EngineGate::Change change(gate_);
        if (!change.granted()) return;
        carryOutPending();
    } while (requests_.any() && !gate_.rendersHere());
}

void Instrument::carryOut(std::uint64_t requests) {
    if (requests == 0) return;
    if (requests & kChangeRate) engine_->setSampleRate(sampleRate_.load(std::memory_order_relaxed));
    if (requests & kPushProgram) pushProgram();
    if (requests & kChangeVoices) engine_->setPolyphony(voices_.load(std::memory_order_relaxed));
    for (int index = 0; index < state::kNumParams; ++index) {
        if (!(requests & std::uint64_t{1} << index)) continue;
        int moves = 1;
        if (index == state::kHP) {
            moves =
                std::min(highPassMoves_.exchange(0, std::memory_order_relaxed), kMostHighPassMoves);
        }
        for (; moves > 0; --moves) apply(index);
    }
}

void Instrument::apply(int index) {
    state::parameter(index).apply(*engine_, valueForEngine(index));
}

float Instrument::valueForEngine(int index) const {
    return state::engineValue(bank_.value(program(), index));
}

void Instrument::pushProgram() {
    pusher_.store(platform::currentThreadId(), std::memory_order_relaxed);
    engine_->setSampleRate(engine_->sampleRate());
    engine_->reset();
    engine_->phaser().setDefaults();
    engine_->reverb().set({valueForEngine(state::kMix), valueForEngine(state::kSize),
                           valueForEngine(state::kBrite), valueForEngine(state::kSpring)});
    for (int index = 0; index < state::kNumParams; ++index) apply(index);
    pusher_.store(kNoThread, std::memory_order_relaxed);
}

int Instrument::playEventsUpTo(int frame) {
    while (const TimedEvent* const event = events_.next(frame)) play(*event);
    return events_.nextIndex();
}

void Instrument::play(const TimedEvent& event) {
    if (event.kind == TimedEvent::kParameter) return changeParameter(event.index, event.value);
    engine_->wake();
    switch (event.kind) {
        case TimedEvent::kProgram:
            if (event.index != program()) setProgram(event.index);
            break;
        case TimedEvent::kSilence:
            engine_->allNotesOff();
            engine_->allSoundOff();
            break;
        default:
            playMessage(event.bytes.data());
    }
}

void Instrument::playMessage(const std::uint8_t* message) {
    const int data1 = message[1] & 0x7F;
    if (statusOf(message) == kProgramChange) return setProgram(data1);
    const bool bound = statusOf(message) == kControlChange &&
                       moveBoundParameters(data1, message[2] & 0x7F) && data1 != kAllNotesOff;
    bound ? letGo(*engine_, data1) : instrument::playMessage(*engine_, message);
}

// Covers bindings from anywhere: another instance, the editor or the map's file.
void Instrument::letGoOfBoundControllers() {
    const state::ControllerMap& map = state::controllerMap();
    const std::uint32_t changes = map.changes();
    if (changes == mapChanges_) return;
    mapChanges_ = changes;
    for (int index = 0; index < state::kNumParams; ++index) letGo(*engine_, map.controller(index));
}

bool Instrument::moveBoundParameters(int controller, int value) {
    const int learning = learnSlot_.take();
    if (state::isParameter(learning)) state::controllerMap().bind(learning, controller);

    bool bound = false;
    for (int index = 0; index < state::kNumParams; ++index) {
        if (state::controllerMap().controller(index) != controller) continue;
        setParameter(index, static_cast<float>(value) * (1.0f / 127.0f));
        bound = true;
    }
    return bound;
}

}  // namespace instrument
