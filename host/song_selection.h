// The part of a song that is played, and the options that choose it.
#pragma once

#include <bitset>
#include <optional>
#include <string>

#include "host/midi_song.h"

namespace host {

class OptionParser;

// As it is: all but channel 10, which General MIDI gives to drums.
struct SongSelection {
    std::bitset<16> channels{0xFDFF};  // bit 0 is channel 1
    bool programs = true;              // program changes are kept
};

// Drops the other events. The song lasts as long as before.
void keep(MidiSong& song, const SongSelection& selection);

bool changesProgram(const MidiSong& song);

// The options as typed.
class SongOptions {
  public:
    void declare(OptionParser& parser);
    // Throws UsageError.
    SongSelection selection() const;

  private:
    std::optional<std::string> channels_;
    bool noDrums_ = false;
    bool ignorePrograms_ = false;
};

}  // namespace host
