// The whole program in-process: exit codes, messages, files, lists and reports.
#include <algorithm>
#include <iomanip>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "host/instrument_names.h"
#include "platform/folders.h"
#include "tests/render/program_kit.h"
#include "tests/render/sound_file.h"
#include "tests/support/foreign_locale.h"
#include "tests/support/script.h"

namespace {

TEST_F(QuarzelRender, RendersAndReports) {
    const auto outcome = run(with({"--rate", "48000", "--tail", "1"}, song_, output_));
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    for (const char* part : {"out.wav\n", "length    2.000 s\n", "peak      -6.02 dBFS\n",
                             "RMS       -54.08 dBFS\n", "took      ", " times real time\n"}) {
        EXPECT_NE(outcome.out.find(part), std::string::npos) << part << " in " << outcome.out;
    }
    EXPECT_EQ(outcome.out.find("clipped"), std::string::npos);
    const SoundFile file(output_);
    EXPECT_EQ(file.frames, 96000);
    EXPECT_EQ(file.bits, 24);
    EXPECT_EQ(folder_.entryCount(), 2);
}

TEST_F(QuarzelRender, AppliesProgramAndParameters) {
    struct Case {
        std::vector<std::string> options;
        float left;  // of the first frame
    };
    const Case cases[] = {
        {{"--program", "Soft"}, 0.25f},
        {{"--program", "Init#2"}, 0.375f},
        {{"--program", "2", "--set", "Level=0.75"}, 0.75f},
        {{"--set", "0=0.125", "--set", "Viola#2=1"}, 0.125f},
        {{"--gain", "-6.020599913"}, 0.25f},
    };
    for (auto c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.options));
        c.options.insert(c.options.end(), {"--bits", "32f", "--quiet"});
        const auto outcome = run(with(c.options, song_, output_));
        EXPECT_EQ(outcome.err + outcome.out, "");
        ASSERT_EQ(outcome.exitCode, 0);
        EXPECT_FLOAT_EQ(SoundFile(output_).samples.at(0), c.left);
    }
}

TEST_F(QuarzelRender, WritesEveryLevelAndSection) {
    struct Case {
        std::vector<std::string> options;
        const char* file;
        double peak;
    };
    const std::string other = folder_.write("other.mid", kSong);
    std::filesystem::create_directory(folder_.path("to"));
    const Case cases[] = {
        {{song_, folder_.path("d.wav"), "--normalize", "-20PEAK"}, "d.wav", 0.1},
        {{song_, folder_.path("f.wav"), "--stem"}, "f - Viola.wav", 0.5},
        {{song_, other, "--to", folder_.path("to")}, "to/song.wav", 0.5},
    };
    for (auto c : cases) {
        SCOPED_TRACE(c.file);
        c.options.insert(c.options.end(), {"--plugin", TEST_INSTRUMENT, "--tail", "1"});
        const auto outcome = run(c.options);
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
        const SoundFile file(folder_.path(c.file));
        EXPECT_EQ(file.frames, 2 * file.rate);
        EXPECT_NEAR(*std::max_element(file.samples.begin(), file.samples.end()), c.peak, 0.02);
    }
    EXPECT_EQ(folder_.read("to/song.wav"), folder_.read("to/other.wav"));
    EXPECT_EQ(folder_.entryCount(), 5);
    const auto failed = run(with({"--to", folder_.path("none")}, song_, other));
    EXPECT_EQ(failed.exitCode, 1);
    for (const char* const name : {"song.wav cannot be", "other.wav cannot be"}) {
        EXPECT_NE(failed.err.find(name), std::string::npos) << failed.err;
    }
}

TEST_F(QuarzelRender, PlaysTheInstrumentBesideItUnlessToldOtherwise) {
    const platform::ScopedFolders folders(folder_.path(""), "");
    EXPECT_EQ(run({"--list"}).err,
              "quarzel-render: There is no file " + folder_.path(host::instrumentFile()) + ".\n");
    std::filesystem::copy_file(TEST_INSTRUMENT, folder_.path(host::instrumentFile()));
    EXPECT_EQ(run({"--list"}).out.substr(0, 15), "Test Instrument");
}

TEST_F(QuarzelRender, ListsProgramsAndParametersWithTheirValues) {
    const auto outcome =
        run({"--list", "--plugin", TEST_INSTRUMENT, "--program", "Soft", "--set", "Viola#2=0.5"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.out,
              "Test Instrument\n\n"
              "Programs (* is playing):\n"
              "    0   Init\n"
              "    1   Init#2\n"
              "    2 * Soft\n\n"
              "Parameters:\n"
              "    0   Level                 0.250000  25 %\n"
              "    1   Viola                 0.250000  25\n"
              "    2   Viola#2               0.500000  50\n"
              "    3   Ring                  0.000000  0\n"
              "    4   Fault                 0.000000  0\n");
}

TEST_F(QuarzelRender, SavesAndLoadsBanksAndPresetsAsLists) {
    const std::string bank = folder_.path("a.fxb"), preset = folder_.path("a.fxp");
    const auto saved =
        run({"--plugin", TEST_INSTRUMENT, "--program", "1", "--set", "Level=0.125", "--set",
             "Ring=0.5", "--save-bank", bank, "--save-preset", preset, "--list"});
    EXPECT_EQ(saved.exitCode, 0) << saved.err;
    EXPECT_EQ(saved.out.substr(0, saved.out.find("Test Instrument")),
              bank + "\n  bank      3 programs\n" + preset + "\n  preset    Init\n");
    // The instrument visited its other programs, and is unchanged.
    EXPECT_NE(saved.out.find("1 * Init#2"), std::string::npos) << saved.out;
    EXPECT_EQ(folder_.read("a.fxb").size(), 156u + 3 * (56 + 4 * 5));
    EXPECT_EQ(
        folder_.read("a.fxb").substr(8, 24),
        "FxBk" + bigEndian(2, 4) + "TstI" + bigEndian(3, 4) + bigEndian(3, 4) + bigEndian(1, 4));
    EXPECT_EQ(folder_.read("a.fxp").substr(28, 4), "Init");

    const auto listed = [&](std::vector<std::string> options) {
        options.insert(options.end(), {"--plugin", TEST_INSTRUMENT, "--list"});
        const auto outcome = run(options);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        return outcome.out;
    };
    // The bank selects its program. The preset is applied after --program, and --set after the
    // preset.
    const auto withBank = listed({"--bank", bank});
    EXPECT_NE(withBank.find("1 * Init#2"), std::string::npos) << withBank;
    EXPECT_NE(withBank.find("Level                 0.125000"), std::string::npos) << withBank;
    const auto withAll =
        listed({"--set", "Viola=0.0625", "--preset", preset, "--program", "Soft", "--bank", bank});
    EXPECT_NE(withAll.find("2 * Init#3"), std::string::npos) << withAll;
    EXPECT_NE(withAll.find("Level                 0.125000"), std::string::npos) << withAll;
    EXPECT_NE(withAll.find("Viola                 0.062500"), std::string::npos) << withAll;
}

class RefusedLine : public testing::TestWithParam<script::Case> {};

TEST_P(RefusedLine, IsAnsweredInOneSentenceAndLeavesNoFile) {
    const TemporaryFolder folder;
    const CurrentFolder current(folder.path());
    const auto header = [](const std::string& form, int version, int count) {
        return form + bigEndian(1, 4) + "TstI" + bigEndian(version, 4) + bigEndian(count, 4);
    };
    const auto chunkBank = header("FBCh", 3, 3) + std::string(128, '\0') + bigEndian(0, 4);
    const auto refused = header("FxCk", 13, 0) + std::string(28, '\0');
    folder.write("chunk.fxb", "CcnK" + bigEndian(chunkBank.size(), 4) + chunkBank);
    folder.write("refused.fxp", "CcnK" + bigEndian(refused.size(), 4) + refused);
    folder.write("text", "neither");
    folder.write("song.mid", kSong);
    folder.write("cut.mid", kSong.substr(0, kSong.size() - 3));
#ifndef _WIN32
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    alarm(20);  // ends a test that waits for the pipe
#endif
    std::filesystem::copy_file(TEST_INSTRUMENT, "instrument.so");
    std::filesystem::copy_file(TEST_NO_INSTRUMENT, "other.so");
    const auto filesBefore = folder.entryCount();
    script::Runner runner;
    const auto refuse = [&](std::istream& line) {
        std::vector<std::string> words;
        for (std::string word; line >> std::quoted(word);) words.push_back(word);
        const bool named = std::find(words.begin(), words.end(), "--plugin") != words.end();
        if (words.size() > 1 && !named) words.insert(words.end(), {"--plugin", "instrument.so"});
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1);
        EXPECT_EQ(folder.entryCount(), filesBefore);
        return outcome;
    };
    runner.commands["exit"] = [&](std::istream& line) {
        runner.say(std::to_string(refuse(line).exitCode));
    };
    runner.commands["render"] = [&](std::istream& line) {
        const Outcome outcome = refuse(line);
        const std::size_t name = std::string("quarzel-render: ").size();
        runner.say(std::to_string(outcome.exitCode) + ' ' +
                   outcome.err.substr(name, outcome.err.size() - name - 1));
    };
    runner.play(GetParam());
#ifndef _WIN32
    alarm(0);
#endif
    EXPECT_EQ(folder.read("song.mid"), kSong);
}

std::vector<script::Case> refusals() {
    auto cases = script::casesOf(QUARZEL_RENDER_SCRIPTS "refusals.txt");
#ifdef _WIN32
    const auto isForLinux = [](const script::Case& one) { return one.title[0] == 'L'; };
    cases.erase(std::remove_if(cases.begin(), cases.end(), isForLinux), cases.end());
#endif
    return cases;
}

INSTANTIATE_TEST_SUITE_P(All, RefusedLine, testing::ValuesIn(refusals()), script::nameOf);

TEST_F(QuarzelRender, EndsCleanlyWhenInterrupted) {
    folder_.write("out.wav", "before");
    const auto outcome = run(with({}, song_, output_), true);
    EXPECT_EQ(outcome.exitCode, 1);
    const std::string other = folder_.write("other.mid", kSong);
    EXPECT_EQ(run(with({"--to", folder_.path("")}, song_, other), true).err,
              "quarzel-render: The render was interrupted.\n");
    std::filesystem::remove(other);
    EXPECT_EQ(folder_.read("out.wav"), "before");
    EXPECT_EQ(folder_.entryCount(), 2);
}

TEST_F(QuarzelRender, WritesAndReadsNumbersWithAPointInEveryLocale) {
    const ForeignLocale locale;
    const auto outcome =
        run(with({"--gain", "60.0", "--set", "Ring=0.5", "--tail", "0.5"}, song_, output_));
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.out.find("1.500 s"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("clipped   132300 samples"), std::string::npos) << outcome.out;
}

}  // namespace
