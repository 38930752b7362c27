// Sound files read back as written, and no partial file is ever visible.
#include "render/sound_writer.h"

#include <gtest/gtest.h>

#include "tests/render/sound_file.h"
#include "tests/support/temporary_folder.h"

namespace {

using render::Container;
using render::SampleFormat;
using render::SoundWriter;

TEST(SoundWriter, RoundsToTheNearestStepAndCountsWhatDoesNotFit) {
    const TemporaryFolder folder;
    struct Case {
        SampleFormat format;
        double step;
        int shift;
        int most;
    };
    for (const Case& c : {Case{SampleFormat::kInt16, 1.0 / 32768, 16, 32767},
                          Case{SampleFormat::kInt24, 1.0 / 8388608, 8, 8388607}}) {
        SCOPED_TRACE(c.most);
        SoundWriter writer(folder.path("a.wav"), {44100, 2, c.format});
        const auto at = [&](double steps) { return static_cast<float>(steps * c.step); };
        writer.write({0.0f, at(1.0), at(-1.0), at(1000.4), at(1000.6), at(c.most), -1.0f, -0.5f});
        EXPECT_EQ(writer.clippedSamples(), 0);
        writer.write({1.0f, -1.5f, 1e30f, 0.5f});
        EXPECT_EQ(writer.clippedSamples(), 3);
        writer.commit();

        const SoundFile file(folder.path("a.wav"));
        EXPECT_EQ(file.channels, 2);
        EXPECT_EQ(file.rate, 44100);
        std::vector<int> expected = {0,      1,       -1,      1000,
                                     1001,   c.most,  ~c.most, ~c.most / 2,
                                     c.most, ~c.most, c.most,  (c.most + 1) / 2};
        for (int& value : expected) value *= 1 << c.shift;
        EXPECT_EQ(file.integers, expected);
    }
}

TEST(SoundWriter, KeepsFloatsAsTheyAreAndEqualFilesEqual) {
    const TemporaryFolder folder;
    const std::vector<float> samples = {0.1f, -3.5f, 1e-30f, 1.0f};
    for (const char* name : {"a.wav", "b.wav"}) {
        SoundWriter writer(folder.path(name), {96000, 1, SampleFormat::kFloat32});
        writer.write(samples);
        writer.commit();
        EXPECT_EQ(writer.clippedSamples(), 0);
    }
    EXPECT_EQ(SoundFile(folder.path("a.wav")).samples, samples);
    EXPECT_EQ(folder.read("a.wav"), folder.read("b.wav"));
}

TEST(SoundWriter, IsAPlainSoundFileUnlessItMayOutgrowOne) {
    const TemporaryFolder folder;
    for (const int64_t maxFrames : {int64_t{1000}, int64_t{1} << 32}) {
        SoundWriter writer(folder.path("a.wav"),
                           {44100, 2, SampleFormat::kInt24, Container::kWav, maxFrames});
        writer.write({0.0f, 0.0f});
        writer.commit();
        EXPECT_EQ(folder.read("a.wav").substr(0, 4), "RIFF");  // RIFF: it stayed small
        EXPECT_EQ(SoundFile(folder.path("a.wav")).frames, 1);
    }
}

TEST(SoundWriter, LeavesNothingBehindUnlessCommittedAndClearsWhatOthersLeft) {
    const TemporaryFolder folder;
    folder.write("a.wav", "what was there before");
    folder.write("a.wav.quarzel-part1", "of a run that was killed");
    folder.write("a.wav.part1", "somebody else's");
    {
        const SoundWriter first(folder.path("a.wav"), {44100, 2, SampleFormat::kInt16});
        SoundWriter second(folder.path("a.wav"), {44100, 2, SampleFormat::kInt16});
        second.write(std::vector<float>(100000));
        EXPECT_EQ(folder.entryCount(), 4);  // neither took the other's file for a leftover
    }
    EXPECT_EQ(folder.entryCount(), 2);
    EXPECT_EQ(folder.read("a.wav"), "what was there before");
    EXPECT_EQ(folder.read("a.wav.part1"), "somebody else's");
}

}  // namespace
