// A Standard MIDI File as a list of channel messages at exact times.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host {

using MidiMessage = std::array<unsigned char, 3>;  // status, data 1, data 2 (0 when unused)

struct SongEvent {
    uint64_t time;  // in units of the song
    MidiMessage message;
};

// Times are whole numbers of a unit that divides every tick of the song, so that they never drift.
struct MidiSong {
    uint64_t unitsPerSecond;
    std::vector<SongEvent> events;  // by time; equal times in the order of tracks
    uint64_t endTime;               // of the track that ends last

    // The frame that a time falls into: rounded down. sampleRate in Hz, up to 768000.
    int64_t frameAt(uint64_t time, int sampleRate) const;
};

// Reads a file of type 0 or 1, strictly: running status, tempo changes in any track, divisions in
// ticks a quarter note or in SMPTE frames. Channel messages are kept; system exclusive messages
// and what else a file tells are passed over. name is what an error calls the file. Throws Error.
MidiSong parseMidiSong(std::string_view bytes, const std::string& name);

// The same from a file. Throws Error.
MidiSong readMidiSong(const std::string& path);

}  // namespace host
