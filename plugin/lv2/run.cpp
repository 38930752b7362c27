// Blocks: ports and MIDI in, sound and requests out.
#include <algorithm>

#include "lv2/atom/util.h"
#include "plugin/block.h"
#include "plugin/lv2/shell.h"

namespace lv2 {

using instrument::TimedEvent;

namespace {

constexpr std::uint32_t kLongestBlock = 1u << 30;

bool isNoteOn(const std::uint8_t* bytes) {
    return (bytes[0] & 0xF0) == 0x90 && bytes[2] != 0;
}

// The one to three bytes of a message; false if there are more.
bool readMessage(const LV2_Atom_Event& event, plugin::Message& bytes) {
    const std::uint32_t size = event.body.size;
    if (size > bytes.size()) return false;
    bytes = {};
    std::copy_n(static_cast<const std::uint8_t*>(LV2_ATOM_BODY_CONST(&event.body)), size,
                bytes.begin());
    return true;
}

// Whether the event lies within the sequence, all of it.
bool isWithin(const LV2_Atom_Sequence& sequence, const LV2_Atom_Event& event) {
    const auto* const end =
        reinterpret_cast<const std::uint8_t*>(&sequence.body) + sequence.atom.size;
    const auto left = end - reinterpret_cast<const std::uint8_t*>(&event);
    constexpr std::ptrdiff_t kHeader = sizeof(LV2_Atom_Event);
    return left >= kHeader && static_cast<std::ptrdiff_t>(event.body.size) <= left - kHeader;
}

}  // namespace

void Shell::run(std::uint32_t frameCount) {
    const int count = static_cast<int>(std::min(frameCount, kLongestBlock));
    const int frames = left_ && right_ ? count : plugin::kNoFrames;
    followPorts(frames);
    followEnabled();
    takeMidi(frames);
    // Rendering goes on while not enabled, so that the instrument comes back where the song is.
    instrument_.render(left_, right_, count);
    if (silenced_ && frames > plugin::kNoFrames) {
        std::fill_n(left_, frames, 0.0f);
        std::fill_n(right_, frames, 0.0f);
    }
    requestPorts();
}

void Shell::followPorts(int frames) {
    watch_.beginBlock(frames, sampleRate_);
    for (int i = 0; i < state::kNumParams; ++i) {
        if (!controls_[i]) continue;
        const float port = *controls_[i];
        if (watch_.moved(i, port) && !standsAt(i, port, instrument_.parameter(i))) {
            instrument_.setParameter(i, valueAtPort(i, port));
        }
    }
}

void Shell::followEnabled() {
    const bool disabled = enabled_ && *enabled_ <= 0.0f;
    if (disabled && !silenced_) instrument_.addEvent({0, TimedEvent::kSilence});
    silenced_ = disabled;
}

void Shell::takeMidi(int frames) {
    constexpr std::uint32_t kHeader = sizeof(LV2_Atom_Sequence_Body);
    if (!midi_ || midi_->atom.type != urids_.atomSequence || midi_->atom.size < kHeader) return;
    LV2_ATOM_SEQUENCE_FOREACH(midi_, event) {
        if (!isWithin(*midi_, *event)) return;
        TimedEvent timed;
        if (event->body.type != urids_.midiEvent || !readMessage(*event, timed.bytes)) continue;
        if (silenced_ && isNoteOn(timed.bytes.data())) continue;
        timed.frame = plugin::frameIn(event->time.frames, frames);
        instrument_.addEvent(timed);
    }
}

// Where the host takes requests, its ports follow programs and controllers without a window, too.
void Shell::requestPorts() {
    if (!changeRequest_ || !changeRequest_->request) return;
    for (int i = 0; i < state::kNumParams; ++i) {
        const float value = instrument_.parameter(i);
        if (!watch_.isBehind(i, value)) continue;
        const float port = portValue(i, value);
        watch_.expect(i, port);
        const auto index = static_cast<std::uint32_t>(i);
        // What the host refuses is not asked for again.
        if (changeRequest_->request(changeRequest_->handle, index, port) != 0) {
            watch_.refuse(i);
        }
    }
}

}  // namespace lv2
