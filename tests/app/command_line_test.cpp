// quarzel's options, and the errors for invalid ones.
#include "app/command_line.h"

#include <gtest/gtest.h>

#include "host/error.h"

namespace {

app::CommandLine parse(std::vector<const char*> words) {
    words.insert(words.begin(), "quarzel");
    return app::parseCommandLine(static_cast<int>(words.size()), words.data());
}

TEST(StandaloneCommandLine, ReadsEveryOption) {
    const auto line =
        parse({"song.mid", "--plugin",       "a.so",       "--bank",     "b.fxb",  "--program",
               "Soft",     "--api",          "jack",       "--device",   "system", "--rate",
               "96000",    "--block",        "64",         "--midi-api", "jack",   "--midi-port",
               "Keys",     "--list-devices", "--no-window"});
    EXPECT_EQ(line.song, "song.mid");
    EXPECT_EQ(line.plugin, "a.so");
    EXPECT_EQ(line.bank, "b.fxb");
    EXPECT_EQ(line.program, "Soft");
    EXPECT_EQ(line.audio.api, "jack");
    EXPECT_EQ(line.audio.device, "system");
    EXPECT_EQ(line.audio.rate, 96000);
    EXPECT_EQ(line.audio.blockSize, 64);
    EXPECT_EQ(line.midiApi, "jack");
    EXPECT_EQ(line.midiPort, "Keys");
    EXPECT_TRUE(line.listsDevices);
    EXPECT_FALSE(line.hasWindow);
    EXPECT_TRUE(parse({}).hasWindow);
}

TEST(StandaloneCommandLine, SaysWhatIsWrong) {
    const struct {
        std::vector<const char*> words;
        const char* error;
    } cases[] = {
        {{"--rate", "fast"}, "--rate: fast is not a number"},
        {{"--rate", "100"}, "--rate: 100 is out of range; it can be 8000 to 768000."},
        {{"--block", "0"}, "--block: 0 is out of range; it can be 16 to 8192."},
        {{"--api", "asio"}, "--api: asio is none of jack, alsa, pulse"},
        {{"--midi-api", "none"}, "--midi-api: none is none of alsa, jack"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.error);
        try {
            parse(c.words);
            ADD_FAILURE() << "accepted";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), c.error);
        }
    }
    EXPECT_THROW(parse({"one.mid", "two.mid"}), host::UsageError);
}

}  // namespace
