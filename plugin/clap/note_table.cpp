// Addresses of notes.
#include "plugin/clap/note_table.h"

#include <algorithm>

namespace clap {

namespace {

bool meet(int32_t one, int32_t other) {
    return one < 0 || other < 0 || one == other;
}

}  // namespace

bool NoteTable::Note::meets(const Note& other) const {
    return meet(id, other.id) && meet(port, other.port) && meet(channel, other.channel) &&
           meet(key, other.key);
}

std::optional<NoteTable::Note> NoteTable::begin(const Note& note) {
    Entry& entry = entries_[note.key];
    const Entry before = entry;
    entry = {note, kHeld};
    const bool lost = before.state != kFree && before.note.told && !before.note.meets(note);
    return lost ? std::optional(before.note) : std::nullopt;
}

bool NoteTable::isEmpty() const {
    return std::all_of(entries_.begin(), entries_.end(),
                       [](const Entry& entry) { return entry.state == kFree; });
}

}  // namespace clap
