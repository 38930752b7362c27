// A Standard MIDI File as a list of channel messages at exact times.
#pragma once

#include <array>
#include <cstddef>
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

// Times are whole multiples of a unit that divides every tick of the song, so they never drift.
struct MidiSong {
    uint64_t unitsPerSecond;
    std::vector<SongEvent> events;  // by time, then by track
    uint64_t endTime;               // of the longest track

    // The frame that contains a time, rounded down. sampleRate is in Hz, up to 768000.
    int64_t frameAt(uint64_t time, int sampleRate) const;
    // The index of the first event at or after a frame.
    std::size_t firstEventFrom(int64_t frame, int sampleRate) const;
};

// Reads a file of type 0 or 1, strictly. Handles running status, tempo changes in any track, and
// divisions in ticks per quarter note or SMPTE frames. Keeps channel messages; skips system
// exclusive messages and everything else. Errors call the file name. Throws Error.
MidiSong parseMidiSong(std::string_view bytes, const std::string& name);

// Reads the same from a file. Throws Error.
MidiSong readMidiSong(const std::string& path);

}  // namespace host
