// What Linux alone has: links, limits of file sizes, and the libraries for compressed files and
// loudness. libsndfile reads our own WAV files, too.
#include <algorithm>

#include <sndfile.h>
#include <sys/resource.h>

#include "host/error.h"
#include "render/sound_writer.h"
#include "tests/render/program_kit.h"
#include "tests/support/traced_child.h"

namespace {

TEST_F(QuarzelRender, WritesEveryFormatAndLoudness) {
    struct Case {
        std::vector<std::string> options;
        const char* file;
        int format;
        double peak;
    };
    const Case cases[] = {
        {{song_, folder_.path("a.flac")}, "a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 0.5},
        {{song_, folder_.path("b.ogg")}, "b.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 0.5},
        {{song_, folder_.path("b.opus"), "--rate", "48000"},
         "b.opus",
         SF_FORMAT_OGG | SF_FORMAT_OPUS,
         0.41},  // it takes some of what is constant
        {{song_, folder_.path("c"), "--format", "flac", "--bits", "16"},
         "c",
         SF_FORMAT_FLAC | SF_FORMAT_PCM_16,
         0.5},
        {{song_, folder_.path("d.wav"), "--bits", "16"},
         "d.wav",
         SF_FORMAT_WAV | SF_FORMAT_PCM_16,
         0.5},
        {{song_, folder_.path("g.wav"), "--bits", "32f"},
         "g.wav",
         SF_FORMAT_WAV | SF_FORMAT_FLOAT,
         0.5},
        // Loud for so short a sound, so its peak is what limits it.
        {{song_, folder_.path("e.wav"), "--normalize", "LUFS", "--set", "Ring=0.1"},
         "e.wav",
         SF_FORMAT_WAV | SF_FORMAT_PCM_24,
         0.891},
    };
    for (auto c : cases) {
        SCOPED_TRACE(c.file);
        c.options.insert(c.options.end(), {"--plugin", TEST_INSTRUMENT, "--tail", "1"});
        const auto outcome = run(c.options);
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_NE(outcome.out.find("loudness"), std::string::npos);
        SF_INFO info = {};
        SNDFILE* const file = sf_open(folder_.path(c.file).c_str(), SFM_READ, &info);
        ASSERT_TRUE(file);
        EXPECT_EQ(info.format, c.format);
        EXPECT_EQ(info.frames, 2 * info.samplerate);
        std::vector<float> samples(static_cast<std::size_t>(info.frames * info.channels));
        sf_readf_float(file, samples.data(), info.frames);
        sf_close(file);
        EXPECT_NEAR(*std::max_element(samples.begin(), samples.end()), c.peak, 0.02);
    }
}

TEST_F(QuarzelRender, SavesBesideARenderAndThroughLinks) {
    folder_.write("a.fxb", "before");
    folder_.write("a.wav", "before");
    std::filesystem::create_symlink("a.fxb", folder_.path("link.fxb"));
    std::filesystem::create_symlink("a.wav", output_);
    const auto outcome =
        run(with({"--save-bank", folder_.path("link.fxb"), "--quiet"}, song_, output_));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(folder_.read("a.fxb").substr(0, 4), "CcnK");
    EXPECT_EQ(folder_.read("a.wav").substr(0, 4), "RIFF");
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.path("link.fxb")));
    EXPECT_TRUE(std::filesystem::is_symlink(output_));
}

TEST(SoundWriter, LeavesTheOldFileOnAFullDisk) {
    const TemporaryFolder folder;
    folder.write("a.wav", "old");
    // Run in a child process, which has the limit.
    TracedChild child([path = folder.path("a.wav")] {
        const rlimit limit = {100000, 100000};
        setrlimit(RLIMIT_FSIZE, &limit);
        signal(SIGXFSZ, SIG_IGN);
        try {
            render::SoundWriter writer(path, {44100, 2, render::SampleFormat::kFloat32});
            for (int i = 0; i < 100; ++i) writer.write(std::vector<float>(1000));
            writer.commit();
            return false;
        } catch (const host::Error& error) {
            return std::string(error.what()).find(path + " cannot be written: ") == 0;
        }
    });
    while (child.next()) {
    }
    EXPECT_EQ(child.result(), TracedChild::kTrue);
    EXPECT_EQ(folder.read("a.wav"), "old");
    EXPECT_EQ(folder.entryCount(), 1);
}

}  // namespace
