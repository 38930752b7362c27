// Reading the text of a bank.
#include "banks/bank_source.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/support/random_mutation.h"

namespace {

std::string faultOf(const std::string& text) {
    try {
        banks::parseBankSource(text);
    } catch (const banks::BankSourceError& error) {
        return error.what();
    }
    return "none";
}

std::string programs(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "program P" + std::to_string(i) + '\n';
    return text;
}

TEST(BankSource, GivesNamesAndStatedValuesAndKeepsDefaults) {
    const banks::BankSource source = banks::parseBankSource(
        "# a comment\n"
        "\n"
        "program First Light\r\n"
        "\tViola 0.25,Viola#2 0 , Env-Attack\t1e-1\n"
        "  # another\n"
        "  Brigthness 1\n"
        "program Twenty-three characters\n"
        "program Last");
    EXPECT_EQ(source.programs, 3);
    EXPECT_EQ(source.bank.programName(0), "First Light");
    EXPECT_EQ(source.bank.programName(1), "Twenty-three characters");
    EXPECT_EQ(source.bank.programName(2), "Last");
    EXPECT_EQ(source.bank.programName(3), "Init");
    for (int index = 0; index < state::kNumParams; ++index) {
        SCOPED_TRACE(index);
        float expected = state::parameter(index).defaultValue;
        EXPECT_EQ(source.bank.value(1, index), expected);
        if (index == state::kViola) expected = 0.25f;
        if (index == state::kViola2) expected = 0.0f;
        if (index == state::kEnvAttack) expected = 0.1f;
        if (index == state::kBrigthness) expected = 1.0f;
        EXPECT_EQ(source.bank.value(0, index), expected);
    }
}

TEST(BankSource, HoldsAsManyProgramsAsABank) {
    EXPECT_EQ(banks::parseBankSource("").programs, 0);
    const banks::BankSource full = banks::parseBankSource(programs(128));
    EXPECT_EQ(full.programs, 128);
    EXPECT_EQ(full.bank.programName(127), "P127");
    EXPECT_EQ(faultOf(programs(129)), "line 129: more than 128 programs");
}

TEST(BankSource, NamesTheLineAndTheFault) {
    const struct {
        const char* text;
        const char* fault;
    } cases[] = {
        {"\nVolume 1", "line 2: a value before the first program"},
        {"program", "line 1: a program without a name"},
        {"program \t \n", "line 1: a program without a name"},
        {"program Twenty-four characters !",
         "line 1: the name \"Twenty-four characters !\" is longer than 23 bytes"},
        {"program A\nVolumes 1", "line 2: unknown parameter \"Volumes\""},
        {"program A\nvolume 1", "line 2: unknown parameter \"volume\""},
        {"program A\nVolume#2 1", "line 2: unknown parameter \"Volume#2\""},
        {"program A\nprograms B", "line 2: unknown parameter \"programs\""},
        {"program A\nVolume", "line 2: \"Volume\" needs a number, not \"\""},
        {"program A\nVolume loud", "line 2: \"Volume\" needs a number, not \"loud\""},
        {"program A\nVolume 0,5", "line 2: unknown parameter \"5\""},
        {"program A\nVolume 0.5 HP 0", "line 2: \"Volume\" needs a number, not \"0.5 HP 0\""},
        {"program A\nVolume 1.01", "line 2: \"Volume\" is 1.01, outside 0 to 1"},
        {"program A\nVolume -0.1", "line 2: \"Volume\" is -0.1, outside 0 to 1"},
        {"program A\nVolume nan", "line 2: \"Volume\" is nan, outside 0 to 1"},
        {"program A\nVolume 1e99", "line 2: \"Volume\" needs a number, not \"1e99\""},
        {"program A\nVolume 1,", "line 2: a comma without a value beside it"},
        {"program A\nVolume 1,,HP 0", "line 2: a comma without a value beside it"},
        {"program A\nHP 1\nVolume 1, HP 0", "line 3: \"HP\" is stated twice"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(faultOf(c.text), c.fault);
    }
}

TEST(BankSource, RefusesOrTakesDamagedText) {
    const std::string sound = "program A\nViola#2 0.5, HP 1e-1\n# b\nprogram C\nKSplit .25\n";
    int taken = 0;
    for (std::uint32_t seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(seed);
        if (faultOf(randomlyMutated(sound, "program VHK#2.015,\n", seed)) == "none") ++taken;
    }
    EXPECT_GT(taken, 0);
    EXPECT_LT(taken, 2000);
}

}  // namespace
