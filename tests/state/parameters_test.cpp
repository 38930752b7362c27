// The parameter table and what may reach the engine.
#include "state/parameters.h"

#include <cmath>
#include <cstring>
#include <limits>

#include <gtest/gtest.h>

namespace {

std::uint32_t bits(float value) {
    std::uint32_t word;
    std::memcpy(&word, &value, sizeof word);
    return word;
}

TEST(Parameters, KeepTheirStoredNamesAndDefaults) {
    struct Row {
        int index;
        const char* name;
        std::uint32_t defaultBits;
    };
    const Row rows[] = {{0, "Volume", 0x3E99999A},      {4, "HP", 0x3EA76C8B},
                        {5, "Brigthness", 0x3F50A3D7},  {11, "Viola", 0x3E99999A},
                        {15, "Contrabass", 0x3EDA1CAC}, {17, "Viola", 0x3F800000},
                        {22, "Cello", 0x00000000},      {29, "Wide", 0x3F0624DD},
                        {36, "Width", 0x3F7AE148},      {41, "Spring", 0x3E99999A}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_STREQ(state::parameter(row.index).name, row.name);
        EXPECT_EQ(bits(state::parameter(row.index).defaultValue), row.defaultBits);
    }
}

TEST(Parameters, GiveTheEngineFiniteValuesWithinItsRange) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(state::engineValue(std::nanf("")), 0.0f);
    EXPECT_EQ(state::engineValue(kInfinity), 1.0f);
    EXPECT_EQ(state::engineValue(-kInfinity), 0.0f);
    EXPECT_EQ(state::engineValue(-0.2f), 0.0f);
    EXPECT_EQ(state::engineValue(1.7f), 1.0f);
    EXPECT_EQ(state::engineValue(0.25f), 0.25f);
}

TEST(Parameters, CountVoicesFromSixToAll) {
    EXPECT_EQ(state::voiceCount(0.0f), 6);
    EXPECT_EQ(state::voiceCount(0.5f), 25);
    EXPECT_EQ(state::voiceCount(1.0f), 44);
    EXPECT_EQ(state::voiceCount(1e9f), 44);
    EXPECT_EQ(state::voiceCount(-1e9f), 6);
    EXPECT_EQ(state::voiceCount(std::nanf("")), 6);
}

TEST(Parameters, ShowThreeDecimalsInAHostsBuffer) {
    EXPECT_EQ(state::valueText(0.3f), "0.300");
    EXPECT_EQ(state::valueText(1.0f), "1.000");
    EXPECT_EQ(state::valueText(0.0005f), "0.001");
    EXPECT_EQ(state::valueText(std::nanf("")), "0.000");
    for (const float extreme : {-1e30f, 1e30f}) {
        EXPECT_LE(state::valueText(extreme).size(), 7u);
    }
}

}  // namespace
