// The notes behind the keys: which one of the host's a key plays.
#pragma once

#include <array>
#include <optional>

#include "plugin/block.h"
#include "plugin/clap/clap.h"

namespace clap {

// The instrument plays a key once, whatever the channel and the note's id; a new note takes the
// key over from the one before. Audio thread, or none.
class NoteTable {
  public:
    // A note's address; -1 stands for any.
    struct Note {
        int32_t id = -1;
        int16_t port = -1;
        int16_t channel = -1;
        int16_t key = -1;
        bool told = true;  // the host wants to hear of its end

        bool meets(const Note& other) const;
        bool isEvery() const { return id < 0 && port <= 0 && channel < 0 && key < 0; }
    };

    // The key begins. Answers the note that has lost it, if the host tells the two apart.
    std::optional<Note> begin(const Note& note);
    // Calls `release(key)` for each held key whose note meets the address.
    template <typename Release>
    void release(const Note& address, Release release) {
        for (Entry& entry : entries_) {
            if (entry.state != kHeld || !entry.note.meets(address)) continue;
            entry.state = kReleased;
            release(entry.note.key);
        }
    }
    // Forgets the notes that meet the address; calls `end(note)` for those to be told of. With
    // `releasedOnly` held ones stay.
    template <typename End>
    void end(const Note& address, bool releasedOnly, End end) {
        for (Entry& entry : entries_) {
            if (entry.state == kFree || (releasedOnly && entry.state == kHeld)) continue;
            if (!entry.note.meets(address)) continue;
            entry.state = kFree;
            if (entry.note.told) end(entry.note);
        }
    }
    bool isEmpty() const;

  private:
    enum State { kFree, kHeld, kReleased };
    struct Entry {
        Note note;
        State state = kFree;
    };

    std::array<Entry, 128> entries_;  // by key
};

}  // namespace clap
