// Reading Standard MIDI Files: the meaning of each kind of file, and robustness against any bytes.
#include "host/midi_song.h"

#include <fstream>

#include <gtest/gtest.h>

#include "host/error.h"
#include "host/song_playback.h"
#include "tests/host/midi_bytes.h"

namespace {

using host::MidiSong;
using host::parseMidiSong;

// "FRAME:STATUS DATA1 DATA2" of each event, in hexadecimal, then the end, at 48000 Hz.
std::string told(const MidiSong& song) {
    std::string text;
    for (const auto& event : song.events) {
        char line[64];
        std::snprintf(line, sizeof line, "%lld:%02x %02x %02x, ",
                      static_cast<long long>(song.frameAt(event.time, 48000)), event.message[0],
                      event.message[1], event.message[2]);
        text += line;
    }
    return text + "end " + std::to_string(song.frameAt(song.endTime, 48000));
}

std::string errorOf(const std::string& file) {
    try {
        parseMidiSong(file, "a.mid");
    } catch (const host::Error& error) {
        return error.what();
    }
    return "";
}

const std::string kNote = bytes({0, 0x90, 60, 100, 96, 0x80, 60, 64});
const std::string kTempo120000 = bytes({0, 0xff, 0x51, 3, 0x01, 0xd4, 0xc0});

// Two tracks with running status, a tempo change, texts, a system exclusive and a program change.
std::string richFile() {
    const std::string tempos = bytes({0, 0xff, 0x51, 3,  0x07, 0xa1, 0x20, 0,    0xff, 0x03,
                                      2, 'h',  'i',  96, 0xff, 0x51, 3,    0x0f, 0x42, 0x40});
    const std::string notes = bytes({0, 0x90, 60, 100,  48, 62, 80,   0, 60, 0,  96,   0xf0, 3, 1,
                                     2, 0xf7, 0,  0xc1, 5,  0,  0xe0, 0, 64, 96, 0xb2, 123,  0});
    return midiFile(1, 96, {tempos, notes});
}

TEST(MidiSong, PutsEveryEventInItsFrame) {
    struct Case {
        const char* what;
        std::string file;
        const char* told;
    };
    const Case cases[] = {
        {"one note at 120 a minute", midiFile(0, 96, {kNote}),
         "0:90 3c 64, 24000:80 3c 40, end 24000"},
        {"running status and a tempo change in another track", richFile(),
         "0:90 3c 64, 12000:90 3e 50, 12000:90 3c 00, 48000:c1 05 00, 48000:e0 00 40, "
         "96000:b2 7b 00, end 96000"},
        {"equal times in the order of tracks", midiFile(1, 96, {kNote, kTempo120000, kNote}),
         "0:90 3c 64, 0:90 3c 64, 5760:80 3c 40, 5760:80 3c 40, end 5760"},
        {"rounding down: 1 tick of 1 / 1001 s",
         midiFile(0, 1001, {bytes({0, 0xff, 0x51, 3, 0x0f, 0x42, 0x40, 1, 0x90, 60, 1})}),
         "47:90 3c 01, end 47"},
        {"25 SMPTE frames of 40 ticks, tempo without meaning",
         midiFile(0, 0xe728, {kTempo120000 + kNote}), "0:90 3c 64, 4608:80 3c 40, end 4608"},
        {"29.97 SMPTE frames of 100 ticks", midiFile(0, 0xe364, {bytes({0x97, 0x38, 0x90, 60, 1})}),
         "48048:90 3c 01, end 48048"},
        {"a longer header and a chunk of another kind",
         chunk("MThd", bytes({0, 0, 0, 1, 0, 96, 9, 9})) + chunk("XFIH", "abc") +
             chunk("MTrk", bytes({0x81, 0x40, 0xff, 0x2f, 0})) + "what follows is not read",
         "end 48000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ASSERT_EQ(errorOf(c.file), "");
        EXPECT_EQ(told(parseMidiSong(c.file, "a.mid")), c.told);
    }
}

TEST(MidiSong, NeverDrifts) {
    // 100000 notes, a third of a millisecond apart, in ticks that are not whole frames.
    std::string track = bytes({0, 0xff, 0x51, 3, 0x00, 0x03, 0xe7});  // 999 us per quarter note
    track += bytes({0, 0x90, 60, 1});
    for (int i = 0; i < 100000; ++i) track += bytes({1, 60, 1});
    const MidiSong song = parseMidiSong(midiFile(0, 3, {track}), "a.mid");
    ASSERT_EQ(song.events.size(), 100001u);
    for (const uint64_t i : {uint64_t{1}, uint64_t{77777}, uint64_t{100000}}) {
        EXPECT_EQ(song.frameAt(song.events[i].time, 44100),
                  static_cast<int64_t>(i * 999 * 44100 / 3000000));
    }
}

// Memory of this process in bytes: VmRSS is the current size, VmHWM the maximum since the last
// reset.
std::size_t resident(const std::string& field) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        std::size_t kilobytes = 0;
        if (word == field + ':' && status >> kilobytes) return kilobytes << 10;
    }
    return 0;
}

TEST(MidiSong, OfManyMessagesInOneTickTakesLittleMoreThanTheirRoom) {
    constexpr std::size_t kMessages = 1100000;
    std::string track = bytes({0, 0x90, 60, 1});
    for (std::size_t i = 1; i < kMessages; ++i) track += bytes({0, 60, 1});
    const std::string file = midiFile(0, 96, {track});
    std::ofstream("/proc/self/clear_refs") << '5';  // resets the maximum
    const std::size_t before = resident("VmRSS");
    const MidiSong song = parseMidiSong(file, "a.mid");
    EXPECT_LT(resident("VmHWM") - before, kMessages * 24);
    ASSERT_EQ(song.events.size(), kMessages);

    host::SongFeed feed(song, 48000);
    std::size_t handedOut = 0;
    for (int block = 0; block < 16; ++block) {
        const auto& events = feed.eventsBetween(block * 64, block * 64 + 64);
        ASSERT_LE(events.size(), host::SongFeed::kMaxEventsPerBlock);
        for (const auto& event : events) handedOut += event.frame == 0;
    }
    EXPECT_EQ(handedOut, kMessages);
}

TEST(MidiSong, RefusesWhatIsNoSongInOneSentence) {
    const auto track = [](std::initializer_list<int> content) {
        return midiHeader(0, 1, 96) + chunk("MTrk", bytes(content));
    };
    struct Case {
        std::string file;
        const char* error;
    };
    const Case cases[] = {
        {"", "a.mid is not a MIDI file."},
        {"RIFF....", "a.mid is not a MIDI file."},
        {midiFile(2, 96, {kNote}),
         "a.mid is a MIDI file of type 2; only types 0 and 1 can be rendered."},
        {chunk("MThd", "abc"), "a.mid is damaged: its header is too short."},
        {midiFile(0, 96, {kNote, kNote}), "a.mid is damaged: its header counts too many tracks."},
        {midiFile(1, 96, {}), "a.mid is damaged: its header counts no track."},
        {midiFile(0, 0, {kNote}), "a.mid is damaged: its header states a time division of zero."},
        {midiFile(0, 0xe700, {kNote}),
         "a.mid is damaged: its header states a time division of zero."},
        {midiFile(0, 0x8004, {kNote}),
         "a.mid is damaged: its header states an unknown SMPTE frame rate."},
        {midiHeader(1, 2, 96) + chunk("MTrk", bytes({0, 0xff, 0x2f, 0})),
         "a.mid is damaged: track 2 is missing."},
        {track({0, 0x90, 60}), "a.mid is damaged: track 1 is cut short."},
        {track({0, 0x90, 60, 1}), "a.mid is damaged: track 1 has no end mark."},
        {track({0, 0xff, 0x2f, 0, 0}), "a.mid is damaged: track 1 goes on after its end mark."},
        {track({0, 0xff, 0x2f, 1, 0}),
         "a.mid is damaged: track 1 has an end mark of the wrong length."},
        {track({0, 60, 1}), "a.mid is damaged: track 1 holds data where a status byte is due."},
        {track({0, 0x90, 60, 1, 0, 0xff, 1, 0, 0, 60, 1}),
         "a.mid is damaged: track 1 holds data where a status byte is due."},
        {track({0, 0x90, 60, 0x80}),
         "a.mid is damaged: track 1 holds a status byte where data is due."},
        {track({0, 0xf8}), "a.mid is damaged: track 1 holds a status byte that no file may hold."},
        {track({0xff, 0xff, 0xff, 0xff, 0}),
         "a.mid is damaged: track 1 holds a number of more than four bytes."},
        {track({0, 0xff, 0x51, 3, 0, 0, 0}), "a.mid is damaged: track 1 holds a tempo of zero."},
        {track({0, 0xff, 0x51, 2, 1, 0}),
         "a.mid is damaged: track 1 holds a tempo of the wrong length."},
        {track({0xff, 0xff, 0xff, 0x7f, 0xff, 0x2f, 0}),
         "a.mid is damaged: the song lasts more than a day."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.error);
        EXPECT_EQ(errorOf(c.file), c.error);
    }
}

TEST(MidiSong, RefusesAFileCutAnywhere) {
    const std::string whole = richFile();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        EXPECT_NE(errorOf(whole.substr(0, length)), "");
    }
}

}  // namespace
