// The render loop: frames, block sizes, tail and measurements.
#include "render/renderer.h"

#include <cmath>

#include <gtest/gtest.h>

#include "host/song_playback.h"
#include "render/sound_writer.h"
#include "tests/host/midi_bytes.h"
#include "tests/render/sound_file.h"
#include "tests/support/temporary_folder.h"

namespace {

using render::RenderSettings;
using render::RenderStatistics;

constexpr int kRate = 48000;
enum TestParameter { kLevel, kFirstViola, kSecondViola, kRing, kFault };

// 1000 ticks per second; note-on at 0, 100 and 250 ms, note-off at 130 ms, end at 400 ms.
host::MidiSong threeNotes() {
    return host::parseMidiSong(
        midiFile(0, 500, {bytes({0,  0x90, 60,   64, 100, 62,   32,   30,   0x80, 60,
                                 16, 120,  0x90, 64, 127, 0x81, 0x16, 0xb0, 1,    0})}),
        "a.mid");
}

struct Rendered {
    RenderStatistics statistics;
    SoundFile file;
};

Rendered render_(const host::MidiSong& song, const RenderSettings& settings, int blockSize,
                 const std::vector<std::pair<int, float>>& parameters = {}) {
    const TemporaryFolder folder;
    host::PluginHost host(TEST_INSTRUMENT, kRate, blockSize);
    for (const auto& [index, value] : parameters) host.setParameter(index, value);
    render::SoundWriter writer(
        folder.path("a.wav"),
        {kRate, render::channelsOf(host), render::SampleFormat::kFloat32, render::Container::kWav,
         host::maxFramesOf(song, kRate, settings.tailSeconds)});
    const auto statistics =
        render::renderSong(song, host, writer, settings, [](double) { return true; });
    writer.commit();
    return {statistics, SoundFile(folder.path("a.wav"))};
}

TEST(Renderer, PutsEveryNoteInItsFrameWithAnyBlockSize) {
    const RenderSettings settings = {0.0, 0.25};
    std::vector<float> expected(2 * 650 * 48, 0.0f);
    const auto mark = [&](int ms, float left, float right) {
        expected[2 * ms * 48] = left;
        expected[2 * ms * 48 + 1] = right;
    };
    mark(0, 0.5f, 64 / 128.0f);
    mark(100, 0.5f, 32 / 128.0f);
    mark(130, 0.0f, -16 / 128.0f);
    mark(250, 0.5f, 127 / 128.0f);
    for (const int blockSize : {1, 17, 480, 512, 65536}) {
        SCOPED_TRACE(blockSize);
        const auto rendered = render_(threeNotes(), settings, blockSize);
        EXPECT_EQ(rendered.statistics.frames, 650 * 48);
        EXPECT_EQ(rendered.file.samples, expected);
    }
}

TEST(Renderer, EndsHalfASecondAfterTheLastSound) {
    struct Case {
        const char* what;
        RenderSettings settings;
        std::vector<std::pair<int, float>> parameters;
        int64_t frames;
    };
    const int64_t songFrames = 400 * 48;
    const int64_t lastNote = 250 * 48;
    const int64_t silence = kRate / 2;
    const Case cases[] = {
        {"silent at the end of the song", {}, {}, songFrames + silence},
        {"ringing for 1.25 s", {}, {{kRing, 0.125f}}, lastNote + 60000 + 1 + silence},
        {"ringing at -102 dBFS",
         {-60.0, {}},
         {{kRing, 1.0f}, {kLevel, 0.015625f}},
         songFrames + silence},
        {"a tail of a given length", {0.0, 1.5}, {{kRing, 1.0f}}, songFrames + 72000},
        {"no tail", {0.0, 0.0}, {{kRing, 1.0f}}, songFrames},
    };
    for (const auto& c : cases) {
        for (const int blockSize : {64, 10007}) {
            SCOPED_TRACE(c.what);
            const auto rendered = render_(threeNotes(), c.settings, blockSize, c.parameters);
            EXPECT_EQ(rendered.statistics.frames, c.frames);
            EXPECT_EQ(rendered.file.frames, c.frames);
        }
    }
}

TEST(Renderer, WaitsThirtySecondsForSilenceAtMost) {
    std::string track = bytes({0, 0xb0, 1, 0});
    for (int i = 0; i < 10; ++i) track += bytes({0, 0x90, 60, 1});
    auto song = host::parseMidiSong(midiFile(0, 500, {track}), "a.mid");
    for (int i = 1; i < 5; ++i) {  // keeps ringing beyond the end of the song
        song.events.push_back({i * 9 * song.unitsPerSecond, {0x90, 60, 1}});
    }
    EXPECT_EQ(render_(song, {}, 4096, {{kRing, 1.0f}}).statistics.frames, 30 * kRate);
}

TEST(Renderer, MeasuresAfterTheGainAndSilencesWhatIsNoNumber) {
    const auto rendered = render_(threeNotes(), {20.0 * std::log10(2.0), 0.0}, 512);
    const double frames = 400 * 48;
    const double squares = 3 * 1.0 + 1.0 + 0.25 + 0.0625 + std::pow(127 / 64.0, 2);
    EXPECT_FLOAT_EQ(rendered.statistics.levels.peak, 127 / 64.0);
    EXPECT_FLOAT_EQ(rendered.statistics.levels.rms, std::sqrt(squares / (2 * frames)));
    EXPECT_FLOAT_EQ(rendered.file.samples[1], 1.0f);
    EXPECT_EQ(rendered.statistics.levels.nonFiniteSamples, 0);
    const auto faulty = render_(threeNotes(), {0.0, 0.0}, 512, {{kFault, 1.0f}});
    EXPECT_EQ(faulty.statistics.levels.nonFiniteSamples, 2 * 400 * 48);
    EXPECT_EQ(faulty.file.samples, std::vector<float>(2 * 400 * 48, 0.0f));
}

}  // namespace
