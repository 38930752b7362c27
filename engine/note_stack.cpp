// Pushing, removing and sustaining keys.
#include "engine/note_stack.h"

#include <algorithm>

namespace engine {

bool NoteStack::push(int key, int velocity) {
    if (size_ == kCapacity) {
        std::copy(notes_.begin() + 1, notes_.end(), notes_.begin());
        --size_;
    }
    notes_[size_++] = {key, velocity, false};
    return size_ == 1;
}

void NoteStack::remove(int key) {
    const auto end = notes_.begin() + size_;
    if (pedalDown_) {
        std::for_each(notes_.begin(), end, [key](Note& n) { n.sustained |= n.key == key; });
        return;
    }
    const auto found =
        std::find_if(notes_.begin(), end, [key](const Note& n) { return n.key == key; });
    if (found == end) return;
    std::copy(found + 1, end, found);
    --size_;
}

int NoteStack::takeSustainedKey() {
    const auto end = notes_.begin() + size_;
    const auto found = std::find_if(notes_.begin(), end, [](const Note& n) { return n.sustained; });
    if (found == end) return -1;
    found->sustained = false;
    return found->key;
}

}  // namespace engine
