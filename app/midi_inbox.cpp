// Sorts messages into a block by arrival time.
#include "app/midi_inbox.h"

#include <algorithm>

namespace app {
namespace {

int frameOf(Clock::time_point arrival, const BlockWindow& window) {
    const double length = std::chrono::duration<double>(window.end - window.begin).count();
    const double offset = std::chrono::duration<double>(arrival - window.begin).count();
    if (length <= 0.0 || offset <= 0.0) return 0;
    return static_cast<int>(std::min(offset / length * window.frames, window.frames - 1.0));
}

}  // namespace

void MidiInbox::takeInto(std::vector<host::BlockEvent>& events, const BlockWindow& window) {
    const auto isBefore = [](int frame, const host::BlockEvent& event) {
        return frame < event.frame;
    };
    for (auto& lane : lanes_) {
        // Messages of a lane keep their order even if their timestamps do not.
        int earliest = 0;
        Letter letter;
        while (events.size() < events.capacity() && lane.pop(letter)) {
            earliest = std::max(earliest, frameOf(letter.arrival, window));
            const auto place = std::upper_bound(events.begin(), events.end(), earliest, isBefore);
            events.insert(place, {earliest, letter.message});
        }
    }
}

void MidiInbox::clear() {
    Letter letter;
    for (auto& lane : lanes_) {
        while (lane.pop(letter)) continue;
    }
}

}  // namespace app
