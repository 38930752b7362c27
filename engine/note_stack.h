// The keys that hold the monophonic bass voice, latest on top.
#pragma once

#include <array>

namespace engine {

class NoteStack {
  public:
    // Forgets all keys; the pedal stays.
    void reset() { size_ = 0; }
    bool empty() const { return size_ == 0; }
    int topKey() const { return notes_[size_ - 1].key; }
    int topVelocity() const { return notes_[size_ - 1].velocity; }

    // Returns true if this is the only key, which retriggers the envelope. A full stack forgets its
    // oldest key.
    bool push(int key, int velocity);
    // Removes the oldest entry of the key. While the pedal is down, entries of the key stay and are
    // marked as sustained.
    void remove(int key);

    void setPedal(bool down) { pedalDown_ = down; }
    bool pedalDown() const { return pedalDown_; }
    // Unmarks one sustained key and returns it, or -1 if there is none.
    int takeSustainedKey();

  private:
    static constexpr int kCapacity = 128;
    struct Note {
        int key;
        int velocity;
        bool sustained;
    };
    std::array<Note, kCapacity> notes_{};
    int size_ = 0;
    bool pedalDown_ = false;
};

}  // namespace engine
