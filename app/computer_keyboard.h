// The computer keyboard as two and a half octaves of keys.
#pragma once

#include <array>
#include <functional>

#include "host/midi_song.h"

namespace app {

// Keys are known by their place, whatever the layout prints on them: the lower row of letters
// begins at C with the black keys in the row above it, the upper row an octave higher with the
// digits. Page Up and Page Down move all by an octave.
class ComputerKeyboard {
  public:
    using Send = std::function<void(const host::MidiMessage&)>;
    explicit ComputerKeyboard(Send send) : send_(std::move(send)) {}

    // code: the X server's, which is that of the Linux input layer plus 8. A key that is down
    // already repeats itself, and is ignored.
    void press(int code);
    // Lets go the note that the key began, whatever the octave is now.
    void release(int code);
    void releaseAll();

  private:
    static constexpr int kCodes = 256;
    static constexpr int kNoKey = -1;

    void shift(int octaves);

    Send send_;
    int lowestKey_ = 48;  // MIDI key of the lower row's C
    std::array<int, kCodes> sounding_ = filled();

    static std::array<int, kCodes> filled() {
        std::array<int, kCodes> none;
        none.fill(kNoKey);
        return none;
    }
};

}  // namespace app
