// The bank as a record: layout, values and names.
#include "state/bank.h"

#include <cstring>
#include <memory>

#include <gtest/gtest.h>

namespace {

using state::Bank;

TEST(Bank, StartsWithDefaultsInEveryProgram) {
    Bank bank;
    for (const int program : {0, 64, 127}) {
        EXPECT_EQ(bank.programName(program), "Init");
        for (int i = 0; i < state::kNumParams; ++i) {
            EXPECT_EQ(bank.value(program, i), state::parameter(i).defaultValue);
        }
    }
    EXPECT_EQ(bank.parameterName(5), "Brigthness");
}

TEST(Bank, ReadsNamesWithoutAnEndWithinTheirField) {
    Bank bank;
    std::memset(bank.chunk().programs[9].name, 'x', state::kNameSize);
    std::memset(bank.chunk().parameters[9].name, 'y', state::kNameSize);
    EXPECT_EQ(bank.programName(9), std::string(state::kNameSize, 'x'));
    EXPECT_EQ(bank.parameterName(9), std::string(state::kNameSize, 'y'));
}

TEST(Bank, CutsLongNamesAndClearsWhatWasThere) {
    Bank bank;
    bank.setProgramName(0, "A long name for a program, too long");
    EXPECT_EQ(bank.programName(0), "A long name for a progr");
    bank.setProgramName(0, "Short");
    const char* name = bank.chunk().programs[0].name;
    EXPECT_TRUE(std::all_of(name + 5, name + state::kNameSize, [](char c) { return c == 0; }));
}

TEST(Bank, ReadsPastTheTableWithinItsBytes) {
    Bank bank;
    const auto nameAsFloat = [](const char* name) {
        float value;
        std::memcpy(&value, name, sizeof value);
        return value;
    };
    EXPECT_EQ(bank.valuePastTable(0), nameAsFloat("Init"));
    EXPECT_EQ(bank.valuePastTable(127), 0.0f);
    std::memset(bank.chunk().programs[1].name, 0xFF, state::kNameSize);
    EXPECT_EQ(bank.valuePastTable(0), 0.0f);
}

}  // namespace
