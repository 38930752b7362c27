// The keys held by the monophonic bass voice, latest on top.
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

    // True when this is the only key, so that the envelope is to start anew. A full stack forgets
    // its oldest key.
    bool push(int key, int velocity);
    // Removes the lowest entry of the key, if there is one; while the pedal is down it stays,
    // marked.
    void remove(int key);

    void setPedal(bool down) { pedalDown_ = down; }
    bool pedalDown() const { return pedalDown_; }
    // Takes the mark off one key that the pedal holds and returns it, or -1 when there is none.
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
