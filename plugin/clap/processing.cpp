// Blocks: the host's events to their frames, sound into its buffers, news back to it.
#include <cmath>

#include "plugin/clap/shell.h"

namespace clap {

using instrument::TimedEvent;
using plugin::kNoFrames;
using plugin::Message;

namespace {

constexpr uint64_t kBoth = 3;  // of two channels

constexpr std::uint64_t bitOf(int index) {
    return std::uint64_t{1} << index;
}

template <typename Event>
const Event* as(const EventHeader& header) {
    return header.size >= sizeof(Event) ? reinterpret_cast<const Event*>(&header) : nullptr;
}

template <typename Event>
Event eventOf(uint16_t type, uint32_t time, uint32_t flags = 0) {
    Event event{};
    event.header = {sizeof event, time, kCoreEventSpaceId, type, flags};
    return event;
}

NoteTable::Note addressOf(const EventNote& event) {
    return {event.note_id, event.port_index, event.channel, event.key};
}

// The left and the right buffer, or null.
float* channelOf(const Process& block, uint32_t channel) {
    if (block.audio_outputs_count == 0 || !block.audio_outputs) return nullptr;
    const AudioBuffer& out = block.audio_outputs[0];
    return out.channel_count > 1 && out.data32 ? out.data32[channel] : nullptr;
}

}  // namespace

void Shell::reset() {
    instrument_.discardEvents();
    silence(0);
}

ProcessStatus Shell::process(const Process* block) {
    if (!block) return kProcessError;
    float* const left = channelOf(*block, 0);
    float* const right = channelOf(*block, 1);
    const int length = static_cast<int>(std::min<uint32_t>(block->frames_count, INT32_MAX));
    const int frames = left && right ? length : kNoFrames;
    time_ = 0;
    pushEdits(block->out_events);
    takeEvents(block->in_events, frames, true);
    instrument_.render(left, right, length);
    time_ = static_cast<uint32_t>(std::max(frames - 1, 0));
    pushChanges(block->out_events);
    if (frames == kNoFrames) return kProcessContinue;

    const bool asleep = instrument_.asleep();
    if (asleep) notes_.end({}, true, [this](const NoteTable::Note& note) { end(note); });
    pushEnds(block->out_events);
    const uint64_t quietLeft = asleep && plugin::isSilent(left, frames) ? 1 : 0;
    const uint64_t quietRight = asleep && plugin::isSilent(right, frames) ? 2 : 0;
    block->audio_outputs[0].constant_mask = quietLeft | quietRight;
    return (quietLeft | quietRight) == kBoth ? kProcessSleep : kProcessContinue;
}

void Shell::flush(const InputEvents* in, const OutputEvents* out) {
    time_ = 0;
    pushEdits(out);
    takeEvents(in, kNoFrames, false);
    pushChanges(out);
}

// --- in ---

void Shell::takeEvents(const InputEvents* in, int frames, bool notes) {
    const uint32_t count = in && in->size && in->get ? in->size(in) : 0;
    // A program comes before the parameters of its frame, which change it.
    for (const bool programs : {true, false}) {
        for (uint32_t i = 0; i < count; ++i) {
            const EventHeader* const header = in->get(in, i);
            if (!header || header->space_id != kCoreEventSpaceId) continue;
            const int frame = plugin::frameIn(header->time, frames);
            if (header->type == kEventParamValue) {
                const auto* const event = as<EventParamValue>(*header);
                if (event && (event->param_id == kProgramId) == programs) {
                    takeParameter(*event, frame, frames);
                }
            } else if (programs || !notes) {
                continue;
            } else if (header->type <= kEventNoteChoke) {
                const auto* const event = as<EventNote>(*header);
                if (event) takeNote(*event, frame);
            } else if (header->type == kEventMidi) {
                const auto* const event = as<EventMidi>(*header);
                if (event) takeMessage(*event, frame);
            }
        }
    }
}

// A value for single notes is none for the instrument.
void Shell::takeParameter(const EventParamValue& event, int frame, int frames) {
    const bool forAll = event.note_id < 0 && event.key < 0;
    if (!isKnownId(event.param_id) || !forAll || std::isnan(event.value)) return;
    const double plain = limitedPlain(event.param_id, event.value);
    if (event.param_id == kProgramId) return takeProgram(plain, frame, frames);
    const auto index = static_cast<int>(event.param_id);
    // Between the positions of a list lie further values, which must not move by an echo.
    const float known = told_.value(index);
    const float wanted = plainOf(index, known) == plain ? known : valueOf(index, plain);
    told_.set(index, wanted);
    if (frames > kNoFrames) {
        instrument_.addEvent({frame, TimedEvent::kParameter, {}, index, wanted});
    } else {
        instrument_.changeParameter(index, wanted);
    }
}

void Shell::takeProgram(double plain, int frame, int frames) {
    const int program = static_cast<int>(plain);
    told_.setProgram(program);
    if (frames > kNoFrames) {
        instrument_.addEvent({frame, TimedEvent::kProgram, {}, program});
    } else if (program != instrument_.program()) {
        instrument_.setProgram(program);
    }
}

void Shell::takeNote(const EventNote& event, int frame) {
    const NoteTable::Note note = addressOf(event);
    const auto finish = [this](const NoteTable::Note& ended) { end(ended); };
    switch (event.header.type) {
        case kEventNoteOn:
            if (!plugin::isKey(event.key)) return;
            if (const auto lost = notes_.begin(note)) end(*lost);
            return add(frame, plugin::noteOn(event.key, event.velocity));
        case kEventNoteOff:
            return notes_.release(note, [&](int key) { add(frame, plugin::noteOff(key)); });
        default:
            if (note.isEvery()) return silence(frame);
            // The instrument cannot cut a single key.
            notes_.release(note, [&](int key) { add(frame, plugin::noteOff(key)); });
            return notes_.end(note, false, finish);
    }
}

// As they are; what they do to keys is noted, for notes may begin in one dialect and end in the
// other.
void Shell::takeMessage(const EventMidi& event, int frame) {
    const Message bytes = {event.data[0], event.data[1], event.data[2]};
    const int status = bytes[0] & 0xF0;
    if (bytes[0] < 0x80 || status == 0xF0) return;
    constexpr int kAllSoundOff = 120;
    constexpr int kAllNotesOff = 123;
    NoteTable::Note note;
    note.key = static_cast<int16_t>(bytes[1] & 0x7F);
    const bool isOn = status == 0x90 && (bytes[2] & 0x7F) > 0;
    const auto nothing = [](int) {};
    if (isOn) {
        note.channel = static_cast<int16_t>(bytes[0] & 0x0F);
        note.port = 0;
        note.told = false;
        if (const auto lost = notes_.begin(note)) end(*lost);
    } else if (status == 0x80 || status == 0x90) {
        notes_.release(note, nothing);
    } else if (status == 0xB0 && (note.key == kAllNotesOff || note.key == kAllSoundOff)) {
        notes_.release({}, nothing);
    }
    add(frame, bytes);
}

void Shell::silence(int frame) {
    instrument_.addEvent({frame, TimedEvent::kSilence});
    notes_.end({}, false, [this](const NoteTable::Note& note) { end(note); });
}

void Shell::add(int frame, const Message& bytes) {
    instrument_.addEvent({frame, TimedEvent::kMessage, bytes});
}

void Shell::end(const NoteTable::Note& note) {
    if (endedCount_ < static_cast<int>(ended_.size())) ended_[endedCount_++] = note;
}

// --- out ---

bool Shell::push(const OutputEvents& out, const EventHeader& event) {
    return out.try_push && out.try_push(&out, &event);
}

bool Shell::pushValue(const OutputEvents& out, int index, uint32_t flags) {
    auto event = eventOf<EventParamValue>(kEventParamValue, time_, flags);
    event.param_id = static_cast<Id>(index);
    event.note_id = -1;
    event.port_index = event.channel = event.key = -1;
    const float value = instrument_.parameter(index);
    event.value = plainOf(index, value);
    if (!push(out, event.header)) return false;
    told_.set(index, value);
    return true;
}

// A gesture that has begun, its value, and the gesture's end if it is over.
bool Shell::pushEdit(const OutputEvents& out, int index) {
    const bool isHeld = held_ & bitOf(index);
    auto gesture = eventOf<EventParamGesture>(kEventParamGestureBegin, time_);
    gesture.param_id = static_cast<Id>(index);
    if (!(begun_ & bitOf(index))) {
        if (!push(out, gesture.header)) return false;
        begun_ |= bitOf(index);
    }
    if (!pushValue(out, index, 0)) return false;
    if (isHeld) return true;
    gesture.header.type = kEventParamGestureEnd;
    if (!push(out, gesture.header)) return false;
    begun_ &= ~bitOf(index);
    return true;
}

// What the host does not take stays for the next time.
void Shell::pushEdits(const OutputEvents* out) {
    if (!out) return;
    const std::uint64_t edits = edits_.take();
    for (int i = 0; i < state::kNumParams; ++i) {
        if ((edits & bitOf(i)) && !pushEdit(*out, i)) edits_.mark(bitOf(i));
    }
}

// Parameters that learnt controllers have moved. After a program or a state the host reads all
// values by itself.
void Shell::pushChanges(const OutputEvents* out) {
    if (!out || valuesChanged_ || edits_.any()) return;
    for (int i = 0; i < state::kNumParams; ++i) {
        if (told_.value(i) != instrument_.parameter(i) && !pushValue(*out, i, kEventDontRecord)) {
            return;
        }
    }
}

void Shell::pushEnds(const OutputEvents* out) {
    for (int i = 0; out && i < endedCount_; ++i) {
        auto event = eventOf<EventNote>(kEventNoteEnd, time_);
        event.note_id = ended_[i].id;
        event.port_index = ended_[i].port;
        event.channel = ended_[i].channel;
        event.key = ended_[i].key;
        push(*out, event.header);
    }
    endedCount_ = 0;
}

}  // namespace clap
