// The renderer's MIDI files.
#include "fuzz/support/target.h"
#include "host/error.h"
#include "host/midi_song.h"

#include <algorithm>
#include <optional>
#include <string>

namespace {

constexpr int kRate = 768000;
constexpr std::size_t kHeaderSize = 14;  // of a usual header chunk

std::optional<host::MidiSong> read(std::string_view bytes) {
    try {
        return host::parseMidiSong(bytes, "a.mid");
    } catch (const host::Error& error) {
        fuzz::require(std::string_view(error.what()).substr(0, 6) == "a.mid ", "a sentence");
        return std::nullopt;
    }
}

void requireSound(const host::MidiSong& song) {
    uint64_t time = 0;
    int64_t frame = 0;
    for (const auto& [eventTime, message] : song.events) {
        fuzz::require(eventTime >= time, "events are in the order of their times");
        fuzz::require(message[0] >= 0x80 && message[0] < 0xf0, "a channel message has a status");
        fuzz::require(message[1] < 0x80 && message[2] < 0x80, "data have seven bits");
        time = eventTime;
        const int64_t eventFrame = song.frameAt(time, kRate);
        fuzz::require(eventFrame >= frame, "so are their frames");
        frame = eventFrame;
    }
    fuzz::require(song.endTime >= time, "the end comes last");
    fuzz::require(song.frameAt(song.endTime, kRate) <= int64_t{86400} * kRate, "a day at most");
}

bool sameSong(const std::optional<host::MidiSong>& a, const std::optional<host::MidiSong>& b) {
    if (!a || !b) return !a && !b;
    return a->unitsPerSecond == b->unitsPerSecond && a->endTime == b->endTime &&
           std::equal(a->events.begin(), a->events.end(), b->events.begin(), b->events.end(),
                      [](const host::SongEvent& x, const host::SongEvent& y) {
                          return x.time == y.time && x.message == y.message;
                      });
}

void run(std::string_view bytes) {
    const auto song = read(bytes);
    if (song) requireSound(*song);
    // Data after the tracks and chunks of other kinds are ignored.
    std::string file(bytes);
    if (song) fuzz::require(sameSong(song, read(file + "and more")), "the rest is not read");
    if (file.substr(0, 8) != std::string("MThd\0\0\0\6", 8)) return;
    if (file.size() < kHeaderSize) return;
    file.insert(kHeaderSize, std::string("XFIH\0\0\0\3abc", 11));
    fuzz::require(sameSong(song, read(file)), "a chunk of another kind changes nothing");
}

const fuzz::Registered registered("midi_song", run);

}  // namespace
