// What the options of both programs leave of a song.
#include "host/song_options.h"

#include <gtest/gtest.h>

#include "host/error.h"
#include "host/option_parser.h"

namespace {

// A note-on in each of the channels 1, 4, 7, 10 and 16, and a program change in channel 4, as
// "CHANNEL" and "pCHANNEL".
std::string left(std::vector<const char*> arguments) {
    host::MidiSong song = {1, {}, 9};
    for (const unsigned char channel : {0, 3, 6, 9, 15}) {
        song.events.push_back({1, {static_cast<unsigned char>(0x90 + channel), 60, 100}});
    }
    song.events.push_back({2, {0xc3, 5, 0}});
    host::OptionParser parser("program", "");
    host::SongOptions options;
    options.declare(parser);
    arguments.insert(arguments.begin(), "program");
    parser.parse(static_cast<int>(arguments.size()), arguments.data());
    host::keep(song, options.selection());
    EXPECT_EQ(song.endTime, 9u);
    std::string text;
    for (const auto& event : song.events) {
        const bool isProgram = (event.message[0] & 0xf0) == 0xc0;
        text += (isProgram ? " p" : " ") + std::to_string((event.message[0] & 15) + 1);
    }
    EXPECT_EQ(host::changesProgram(song), text.find('p') != std::string::npos);
    return text;
}

TEST(SongSelection, LeavesWhatTheOptionsSay) {
    struct Case {
        std::vector<const char*> arguments;
        const char* left;
    };
    const Case cases[] = {
        {{}, " 1 4 7 16 p4"},
        {{"--ignore-programs"}, " 1 4 7 16"},
        {{"--channels", "1-4,7"}, " 1 4 7 p4"},
        {{"--channels", "1-16"}, " 1 4 7 10 16 p4"},
        {{"--channels", "10,16-16"}, " 10 16"},
        {{"--channels", "7-16", "--no-drums"}, " 7 16"},
        {{"--no-drums"}, " 1 4 7 16 p4"},
    };
    for (const auto& [arguments, expected] : cases) {
        EXPECT_EQ(left(arguments), expected) << testing::PrintToString(arguments);
    }
    for (const char* list : {"0", "17", "4-1", "1-", "-3", "1,,2", "", "all", "1.5"}) {
        EXPECT_THROW(left({"--channels", list}), std::runtime_error) << list;
    }
}

}  // namespace
