#include "banks/take.h"

#include <algorithm>
#include <cstdint>

namespace banks {

namespace {

constexpr int kBlock = 512;

struct Event {
    std::size_t frame;
    int key;
    int velocity;  // 0: let go
};

std::vector<Event> eventsOf(const std::vector<Note>& notes) {
    std::vector<Event> events;
    for (const Note& note : notes) {
        events.push_back({frameAt(note.on), note.key, note.velocity});
        events.push_back({frameAt(note.off), note.key, 0});
    }
    const auto earlier = [](const Event& a, const Event& b) { return a.frame < b.frame; };
    std::stable_sort(events.begin(), events.end(), earlier);
    return events;
}

}  // namespace

Take play(instrument::Instrument& instrument, const std::vector<Note>& notes, double seconds) {
    Take take;
    take.left.resize(frameAt(seconds));
    take.right.resize(frameAt(seconds));
    const std::vector<Event> events = eventsOf(notes);
    auto next = events.begin();
    for (std::size_t at = 0; at < take.frames(); at += kBlock) {
        const std::size_t frames = std::min<std::size_t>(kBlock, take.frames() - at);
        for (; next != events.end() && next->frame < at + frames; ++next) {
            const std::uint8_t message[] = {0x90, static_cast<std::uint8_t>(next->key),
                                            static_cast<std::uint8_t>(next->velocity)};
            // A message takes effect one frame before its own.
            instrument.addMessage(static_cast<int>(next->frame - at) + 1, message);
        }
        instrument.render(&take.left[at], &take.right[at], static_cast<int>(frames));
    }
    return take;
}

std::unique_ptr<instrument::Instrument> instrumentWith(const state::Bank& bank) {
    static instrument::Host host;
    auto instrument = std::make_unique<instrument::Instrument>(host);
    instrument->start(kSampleRate);
    instrument->bankChunk() = state::Bank(bank).chunk();
    return instrument;
}

void choose(instrument::Instrument& instrument, int program) {
    constexpr int kHalvings = 12;
    for (int i = 0; i < kHalvings; ++i) instrument.setProgram(program);
}

}  // namespace banks
