// The module of the audio worklet: the instrument, as functions that a script calls.
//
// The worklet calls everything on its audio thread. Nothing allocates after quarzelStart, except
// quarzelTakeState and quarzelState, which carry whole banks.
#include <algorithm>
#include <array>
#include <bitset>
#include <cstring>
#include <memory>
#include <optional>

#include "instrument/instrument.h"
#include "platform/web_page.h"
#include "plugin/block.h"
#include "plugin/web/news.h"
#include "state/saved_state.h"

namespace {

using instrument::TimedEvent;

constexpr int kMostFrames = 1024;  // a render quantum has 128 today

struct Sound {
    instrument::Host host;
    instrument::Instrument instrument{host};
    std::array<float, kMostFrames> left{};
    std::array<float, kMostFrames> right{};
    std::array<float, web::kNewsSize> news{};
    std::array<char, state::kLongestState> bytes{};
};

Sound& sound() {
    static const auto sound = std::make_unique<Sound>();
    return *sound;
}

void add(int frame, TimedEvent::Kind kind, const plugin::Message& bytes, int index = 0) {
    sound().instrument.addEvent({std::max(frame, 0), kind, bytes, index});
}

// What the first bytes of the buffer hold.
std::optional<state::SavedState> stateOf(int size) {
    const auto limited = std::clamp(size, 0, static_cast<int>(sound().bytes.size()));
    return state::readSavedState({sound().bytes.data(), static_cast<std::size_t>(limited)});
}

}  // namespace

// A worklet has no page. The bank comes by message, so a missing file is no news either.
void quarzelShowMessage(const char*, const char*) {}
int quarzelOpenDocument(const char*) {
    return 0;
}
void quarzelFileWritten(const char*) {}
void quarzelAskForFile() {}

extern "C" {

// With a state of `size` bytes, which takes the place of the default bank: the engine never hears
// another.
void quarzelStart(double sampleRate, int size) {
    instrument::Instrument& instrument = sound().instrument;
    const auto saved = stateOf(size);
    if (saved) std::memcpy(&instrument.bankChunk(), saved->bank.data(), sizeof(state::BankChunk));
    instrument.start(sampleRate);
    instrument.resume();
    if (saved && saved->program != 0) instrument.setProgram(saved->program);
}

int quarzelMostFrames() {
    return kMostFrames;
}
float* quarzelLeft() {
    return sound().left.data();
}
float* quarzelRight() {
    return sound().right.data();
}

// Renders up to kMostFrames frames into the two buffers.
void quarzelRender(int frames) {
    sound().instrument.render(sound().left.data(), sound().right.data(),
                              std::clamp(frames, 0, kMostFrames));
}

// Events of the next block; the frame counts from its begin.
void quarzelMessage(int frame, int status, int data1, int data2) {
    add(frame, TimedEvent::kMessage,
        {static_cast<std::uint8_t>(status), static_cast<std::uint8_t>(data1),
         static_cast<std::uint8_t>(data2)});
}
void quarzelSilence() {
    add(0, TimedEvent::kSilence, {});
}

// intentional: every call counts, as "HP" moves each time
void quarzelSetParameter(int index, float value) {
    sound().instrument.setParameter(index, value);
}
float quarzelParameter(int index) {
    return sound().instrument.parameter(index);
}
void quarzelSetProgram(int program) {
    sound().instrument.setProgram(program);
}
int quarzelProgram() {
    return sound().instrument.program();
}
// Lets a parameter follow a controller, or none if it is negative.
void quarzelBind(int parameter, int controller) {
    const bool valid = state::isParameter(parameter) && controller < 128;
    if (valid) state::controllerMap().bind(parameter, std::max(controller, -1));
}

// Whole states go through this buffer of quarzelMostBytes bytes.
char* quarzelBytes() {
    return sound().bytes.data();
}
int quarzelMostBytes() {
    return static_cast<int>(sound().bytes.size());
}
// A saved state, a bank file or a bank chunk. Returns 0 if the bytes are none.
int quarzelTakeState(int size) {
    const auto saved = stateOf(size);
    if (saved) sound().instrument.loadSavedState(*saved);
    return saved.has_value();
}
// Returns how many bytes the state has.
int quarzelState() {
    const std::string bytes = state::bytesOf(sound().instrument.savedState());
    const std::size_t size = std::min(bytes.size(), sound().bytes.size());
    std::memcpy(quarzelBytes(), bytes.data(), size);
    return static_cast<int>(size);
}

// What the page shows about the sound: kNewsSize numbers, as plugin/web/news.h lists them.
int quarzelNewsSize() {
    return web::kNewsSize;
}
float* quarzelNews() {
    Sound& of = sound();
    const editor::OutputPeaks peaks = of.instrument.takeOutputPeaks();
    of.news[web::kPeakLeft] = peaks.left;
    of.news[web::kPeakRight] = peaks.right;
    of.news[web::kHeldNotes] = static_cast<float>(of.instrument.heldNotes());
    of.news[web::kLastKey] = static_cast<float>(of.instrument.lastKey());
    for (int tap = 0; tap < web::kTaps; ++tap) {
        of.news[web::kFirstTap + tap] = of.instrument.chorusTap(tap);
    }
    const std::bitset<128> held = of.instrument.heldKeys();
    for (int key = 0; key < 128; ++key) {
        float& number = of.news[web::kFirstHeldKeys + key / web::kKeysPerNumber];
        if (key % web::kKeysPerNumber == 0) number = 0.0f;
        if (held[key]) number += static_cast<float>(1 << key % web::kKeysPerNumber);
    }
    return of.news.data();
}

}  // extern "C"
