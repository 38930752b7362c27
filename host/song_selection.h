// The part of a song that is played.
#pragma once

#include <bitset>

#include "host/midi_song.h"

namespace host {

// As it is: all but channel 10, which General MIDI gives to drums.
struct SongSelection {
    std::bitset<16> channels{0xFDFF};  // bit 0 is channel 1
    bool programs = true;              // program changes are kept
};

// Drops the other events. The song lasts as long as before.
void keep(MidiSong& song, const SongSelection& selection);

bool changesProgram(const MidiSong& song);

}  // namespace host
