// Reads Standard MIDI Files: chunks, tracks, and the tempo map that gives every event its time.
#include "host/midi_song.h"

#include <functional>
#include <optional>
#include <queue>
#include <tuple>

#include "host/error.h"
#include "host/files.h"
#include "platform/byte_reader.h"

namespace host {
namespace {

using platform::ByteReader;
using platform::Damage;

constexpr std::size_t kMaxFileBytes = 64 << 20;
constexpr uint64_t kMaxSeconds = 24 * 60 * 60;
constexpr uint32_t kDefaultTempo = 500000;  // microseconds per quarter note: 120 BPM

// The length of a tick in units of the song.
struct Timing {
    uint64_t unitsPerSecond;
    uint64_t unitsPerTick;  // until the first tempo change
    bool followsTempo;
};

struct TrackEvent {
    enum class Kind { kMessage, kTempo, kEnd };
    uint64_t tick;
    Kind kind;
    uint32_t tempo;  // microseconds per quarter note
    MidiMessage message;
};

// With ticks per quarter note, the unit is a microsecond divided by their number, so a tick lasts
// as many units as the tempo has microseconds. With SMPTE frames, tempo has no effect.
Timing timingOf(uint32_t division) {
    if ((division & 0x8000) == 0) {
        if (division == 0) throw Damage("states a time division of zero");
        return {division * uint64_t{1000000}, kDefaultTempo, true};
    }
    const uint32_t framesPerSecond = 0x100 - (division >> 8);
    const uint64_t ticksPerFrame = division & 0xff;
    if (ticksPerFrame == 0) throw Damage("states a time division of zero");
    switch (framesPerSecond) {
        case 24:
        case 25:
        case 30:
            return {framesPerSecond * ticksPerFrame, 1, false};
        case 29:  // means 30000 / 1001
            return {30000 * ticksPerFrame, 1001, false};
    }
    throw Damage("states an unknown SMPTE frame rate");
}

// Reads the events of one track.
class TrackReader {
  public:
    explicit TrackReader(std::string_view bytes) : reader_(bytes) {}

    // The next event that matters. The last one is the end of the track.
    std::optional<TrackEvent> next() {
        while (!ended_) {
            if (reader_.left() == 0) throw Damage("has no end mark");
            tick_ += reader_.variableLengthNumber();
            if (const auto event = readEvent()) return event;
        }
        if (reader_.left() != 0) throw Damage("goes on after its end mark");
        return std::nullopt;
    }

  private:
    std::optional<TrackEvent> readEvent() {
        const uint32_t first = reader_.number(1);
        if (first == 0xff) return readMeta();
        if (first == 0xf0 || first == 0xf7) {
            runningStatus_ = 0;
            reader_.take(reader_.variableLengthNumber());
            return std::nullopt;
        }
        if (first > 0xf0) throw Damage("holds a status byte that no file may hold");
        if (first >= 0x80) {
            runningStatus_ = first;
            return readMessage(reader_.number(1));
        }
        if (runningStatus_ == 0) throw Damage("holds data where a status byte is due");
        return readMessage(first);
    }

    TrackEvent readMessage(uint32_t data1) {
        const uint32_t kind = runningStatus_ & 0xf0;
        const bool hasTwoDataBytes = kind != 0xc0 && kind != 0xd0;
        const uint32_t data2 = hasTwoDataBytes ? reader_.number(1) : 0;
        if (data1 > 0x7f || data2 > 0x7f) throw Damage("holds a status byte where data is due");
        TrackEvent event = {tick_, TrackEvent::Kind::kMessage, 0, {}};
        event.message = {uint8_t(runningStatus_), uint8_t(data1), uint8_t(data2)};
        return event;
    }

    std::optional<TrackEvent> readMeta() {
        runningStatus_ = 0;
        const uint32_t type = reader_.number(1);
        ByteReader content(reader_.take(reader_.variableLengthNumber()));
        if (type == 0x2f) {
            if (content.left() != 0) throw Damage("has an end mark of the wrong length");
            ended_ = true;
            return TrackEvent{tick_, TrackEvent::Kind::kEnd, 0, {}};
        }
        if (type != 0x51) return std::nullopt;
        if (content.left() != 3) throw Damage("holds a tempo of the wrong length");
        const uint32_t tempo = content.number(3);
        if (tempo == 0) throw Damage("holds a tempo of zero");
        return TrackEvent{tick_, TrackEvent::Kind::kTempo, tempo, {}};
    }

    ByteReader reader_;
    uint64_t tick_ = 0;
    uint32_t runningStatus_ = 0;  // 0: none
    bool ended_ = false;
};

// Merges the events of all tracks by time; equal times keep the order of tracks. It reads events on
// demand, because a list of them would be many times as long as the file.
class TrackMerger {
  public:
    explicit TrackMerger(const std::vector<std::string_view>& tracks) {
        tracks_.reserve(tracks.size());
        for (const auto& bytes : tracks) {
            tracks_.emplace_back(bytes);
            queueNextOf(tracks_.size() - 1);
        }
    }

    std::optional<TrackEvent> next() {
        if (queue_.empty()) return std::nullopt;
        const Next first = queue_.top();
        queue_.pop();
        queueNextOf(first.track);
        return first.event;
    }

  private:
    struct Next {
        TrackEvent event;
        std::size_t track;
        bool operator>(const Next& other) const {
            return std::tie(event.tick, track) > std::tie(other.event.tick, other.track);
        }
    };

    void queueNextOf(std::size_t track) {
        if (const auto event = tracks_[track].next()) queue_.push({*event, track});
    }

    std::vector<TrackReader> tracks_;
    std::priority_queue<Next, std::vector<Next>, std::greater<>> queue_;
};

// Totals, once every track has been read to its end.
struct Tracks {
    std::vector<std::string_view> bytes;
    std::size_t messageCount = 0;
};

MidiSong timedSong(const Tracks& tracks, Timing timing) {
    MidiSong song = {timing.unitsPerSecond, {}, 0};
    song.events.reserve(tracks.messageCount);
    const uint64_t maxUnits = timing.unitsPerSecond * kMaxSeconds;
    uint64_t tick = 0;
    uint64_t time = 0;
    TrackMerger merger(tracks.bytes);
    while (const auto event = merger.next()) {
        const uint64_t ticks = event->tick - tick;
        if (ticks > (maxUnits - time) / timing.unitsPerTick) throw Damage("lasts more than a day");
        time += ticks * timing.unitsPerTick;
        tick = event->tick;
        if (event->kind == TrackEvent::Kind::kMessage)
            song.events.push_back({time, event->message});
        if (event->kind == TrackEvent::Kind::kTempo && timing.followsTempo) {
            timing.unitsPerTick = event->tempo;
        }
    }
    song.endTime = time;
    return song;
}

// Runs read and adds the place to the damage that it reports.
template <typename Read>
auto within(const std::string& place, Read read) {
    try {
        return read();
    } catch (const Damage& damage) {
        throw Damage(place + " " + damage.what());
    }
}

struct Header {
    uint32_t type;
    uint32_t trackCount;
    uint32_t division;
};

Header readHeader(ByteReader& file) {
    const std::string_view content = file.take(file.number(4));
    if (content.size() < 6) throw Damage("is too short");
    ByteReader reader(content);
    Header header = {};
    header.type = reader.number(2);
    header.trackCount = reader.number(2);
    header.division = reader.number(2);
    return header;
}

Timing timingOf(const Header& header) {
    if (header.trackCount == 0) throw Damage("counts no track");
    if (header.type == 0 && header.trackCount != 1) throw Damage("counts too many tracks");
    return timingOf(header.division);
}

// Reads one chunk and adds it if it is a track. Returns whether it is one.
bool readTrackChunk(ByteReader& file, Tracks& tracks) {
    if (file.left() == 0) throw Damage("is missing");
    const std::string_view kind = file.take(4);
    const std::string_view content = file.take(file.number(4));
    if (kind != "MTrk") return false;
    TrackReader reader(content);
    while (const auto event = reader.next()) {
        tracks.messageCount += event->kind == TrackEvent::Kind::kMessage;
    }
    tracks.bytes.push_back(content);
    return true;
}

// Skips chunks of other kinds.
Tracks readTracks(ByteReader& file, uint32_t trackCount) {
    Tracks tracks;
    for (uint32_t track = 1; track <= trackCount;) {
        const bool wasTrack =
            within("track " + std::to_string(track), [&] { return readTrackChunk(file, tracks); });
        if (wasTrack) ++track;
    }
    return tracks;
}

}  // namespace

int64_t MidiSong::frameAt(uint64_t time, int sampleRate) const {
    const auto rate = static_cast<uint64_t>(sampleRate);
    const uint64_t wholeSeconds = time / unitsPerSecond;
    const uint64_t rest = time % unitsPerSecond;  // below 2^35, so the product below fits
    return static_cast<int64_t>(wholeSeconds * rate + rest * rate / unitsPerSecond);
}

MidiSong parseMidiSong(std::string_view bytes, const std::string& name) {
    if (bytes.substr(0, 4) != "MThd") throw Error(name + " is not a MIDI file.");
    ByteReader file(bytes.substr(4));
    try {
        const Header header = within("its header", [&] { return readHeader(file); });
        if (header.type > 1) {
            throw Error(name + " is a MIDI file of type " + std::to_string(header.type) +
                        "; only types 0 and 1 can be rendered.");
        }
        const Timing timing = within("its header", [&] { return timingOf(header); });
        const auto tracks = readTracks(file, header.trackCount);
        return within("the song", [&] { return timedSong(tracks, timing); });
    } catch (const Damage& damage) {
        throw Error(name + " is damaged: " + damage.what() + ".");
    }
}

MidiSong readMidiSong(const std::string& path) {
    return parseMidiSong(readWhole(path, kMaxFileBytes, "a MIDI file"), path);
}

}  // namespace host
