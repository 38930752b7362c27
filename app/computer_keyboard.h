// The computer keyboard as two and a half octaves of keys.
#pragma once

#include <array>
#include <functional>

#include "host/midi_song.h"

namespace app {

// Keys are identified by position, independent of the layout. The lower row of letters begins at C,
// with the black keys in the row above. The upper row, with the digits, begins an octave higher.
// Page Up and Page Down transpose by an octave.
class ComputerKeyboard {
  public:
    using Send = std::function<void(const host::MidiMessage&)>;
    explicit ComputerKeyboard(Send send) : send_(std::move(send)) {}

    // code is the X server's: the Linux input code plus 8. Key repeats are ignored.
    void press(int code);
    // Releases the note that the key started, even if the octave has changed.
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
