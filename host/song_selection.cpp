// Chooses channels and kinds of events.
#include "host/song_selection.h"

#include <algorithm>

namespace host {
namespace {

bool isProgramChange(const SongEvent& event) {
    return (event.message[0] & 0xf0) == 0xc0;
}

}  // namespace

void keep(MidiSong& song, const SongSelection& selection) {
    const auto isDropped = [&](const SongEvent& event) {
        return !selection.channels[event.message[0] & 0x0f] ||
               (!selection.programs && isProgramChange(event));
    };
    song.events.erase(std::remove_if(song.events.begin(), song.events.end(), isDropped),
                      song.events.end());
}

bool changesProgram(const MidiSong& song) {
    return std::any_of(song.events.begin(), song.events.end(), isProgramChange);
}

}  // namespace host
