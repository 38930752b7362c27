// The command line and its options. program_test.cpp has the lines that make no sense.
#include "render/command_line.h"

#include <gtest/gtest.h>

namespace {

render::CommandLine parsed(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "quarzel-render");
    return render::parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

TEST(CommandLine, TakesEveryOptionAnywhere) {
    const auto line =
        parsed({"--rate",       "96000",  "--set", "Viola#2=0.5", "a.mid",  "--gain", "-6.5",
                "--block=1",    "--set",  "a=b=1", "b.wav",       "--bits", "32f",    "--program",
                "Soft Strings", "--tail", "2.5",   "--plugin",    "x.so",   "--quiet"});
    EXPECT_EQ(line.sampleRate, 96000);
    EXPECT_EQ(line.blockSize, 1);
    EXPECT_EQ(line.format, render::SampleFormat::kFloat32);
    EXPECT_EQ(line.render.gainDb, -6.5);
    EXPECT_EQ(line.render.tailSeconds, 2.5);
    EXPECT_EQ(line.program, "Soft Strings");
    EXPECT_EQ(line.plugin, "x.so");
    EXPECT_TRUE(line.quiet);
    ASSERT_EQ(line.settings.size(), 2u);
    EXPECT_EQ(line.settings[0].parameter, "Viola#2");
    EXPECT_EQ(line.settings[0].value, 0.5f);
    EXPECT_EQ(line.settings[1].parameter, "a=b");
    EXPECT_EQ(line.output, "b.wav");
    const auto saving = parsed({"--bank", "a.fxb", "--preset", "a.fxp", "--save-preset", "b.fxp"});
    EXPECT_EQ(saving.bank, "a.fxb");
    EXPECT_EQ(saving.preset, "a.fxp");
    EXPECT_EQ(saving.savedPreset, "b.fxp");
    EXPECT_TRUE(saving.songs.empty());
    EXPECT_EQ(parsed({"--save-bank", "b.fxb", "a.mid", "b.wav"}).songs.size(), 1u);
    EXPECT_EQ(parsed({"--to", "x", "a.mid", "b.mid", "c.mid"}).songs.size(), 3u);
    EXPECT_FALSE(parsed({"--stem", "a.mid", "b.wav"}).selection.programs);
    EXPECT_EQ(parsed({"a", "b", "--rate", "8000"}).sampleRate, 8000);
    EXPECT_EQ(parsed({"a", "b", "--rate", "768000"}).sampleRate, 768000);
    const struct {
        const char* text;
        render::Normalization::Of of;
        double level;
    } levels[] = {{"LUFS", render::Normalization::Of::kLoudness, -16.0},
                  {"-23.5LUFS", render::Normalization::Of::kLoudness, -23.5},
                  {"PEAK", render::Normalization::Of::kPeak, -1.0},
                  {"-0.5PEAK", render::Normalization::Of::kPeak, -0.5}};
    for (const auto& [text, of, level] : levels) {
        if (of == render::Normalization::Of::kLoudness && !render::canMeasureLoudness()) continue;
        const auto normalization = parsed({"a", "b", "--normalize", text}).normalization;
        ASSERT_TRUE(normalization) << text;
        EXPECT_EQ(normalization->of, of) << text;
        EXPECT_EQ(normalization->level, level) << text;
    }
}

TEST(CommandLine, AnswersForHelpAndVersion) {
    EXPECT_EQ(parsed({"--version"}).answer.substr(0, 15), "quarzel-render ");
    EXPECT_NE(parsed({"--help"}).answer.find("--stem"), std::string::npos);
}

}  // namespace
