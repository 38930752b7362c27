// The parameter table and what may reach the engine.
#include "state/parameters.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include <gtest/gtest.h>

#include "tests/support/recording_engine.h"

namespace {

std::uint32_t bits(float value) {
    std::uint32_t word;
    std::memcpy(&word, &value, sizeof word);
    return word;
}

// What the engine is told at five values of every parameter.
constexpr float kValues[] = {0.0f, 0.3f, 0.5f, 0.999f, 1.0f};
using Told = std::array<double, std::size(kValues)>;
constexpr Told kItself = {0.0, 0.3, 0.5, 0.999, 1.0};
constexpr Told kReduced = {0.0, 0.12, 0.2, 0.3996, 0.4};
constexpr Told kOnOff = {0.0, 0.0, 0.0, 1.0, 1.0};

const struct {
    const char* name;
    std::uint32_t defaultBits;
    const char* call;  // empty: none
    Told told;
} kRows[] = {
    {"Volume", 0x3E99999A, "volume", kItself},
    {"Pan", 0x3F000000, "", {}},
    {"MasterP", 0x3F000000, "pitch-offset", {-1.0, -0.4, 0.0, 0.998, 1.0}},
    {"VelocityAmp", 0x00000000, "velocity", {0.001, 0.3004, 0.5, 0.998002, 0.999}},
    {"HP", 0x3EA76C8B, "high-pass", kItself},
    {"Brigthness", 0x3F50A3D7, "brightness", kItself},
    {"Waveform", 0x00000000, "waveform", {0, 0, 1, 1, 2}},
    {"Env-Attack", 0x3F000000, "attack", {2.5e-8, 0.081090025, 0.625250025, 9.961058, 10.001}},
    {"Env-Decay", 0x3DCCCCCD, "decay", {0.1, 0.361, 1.225, 12.056062, 12.1}},
    {"Env-Sustain", 0x3F800000, "sustain", kItself},
    {"Env-Release", 0x3DCCCCCD, "release", {25.0, 205.0, 525.0, 2021.002, 2025.0}},
    {"Viola", 0x3E99999A, "level:viola", kItself},
    {"Violin", 0x00000000, "level:violin", kReduced},
    {"Brass", 0x3DCCCCCD, "level:brass", kItself},
    {"Horn", 0x3DCCCCCD, "level:horn", kItself},
    {"Contrabass", 0x3EDA1CAC, "level:contrabass", kReduced},
    {"Cello", 0x3EDA1CAC, "level:cello", kReduced},
    {"Viola", 0x3F800000, "switch:viola", kItself},
    {"Violin", 0x3F800000, "switch:violin", kItself},
    {"Brass", 0x3F800000, "switch:brass", kItself},
    {"Horn", 0x3F800000, "switch:horn", kItself},
    {"Contrabass", 0x00000000, "switch:contrabass", kItself},
    {"Cello", 0x00000000, "switch:cello", kItself},
    {"KSplit", 0x3F000000, "split", {3 / 11.0, 6 / 11.0, 8.25 / 11.0, 12 / 11.0, 14.25 / 11.0}},
    {"Vlphs", 0x00000000, "violin-phase", {0.0, 0.15, 0.25, 0.4995, 0.5}},
    {"Configs", 0x3F800000, "shared-envelope", kItself},
    {"Chorus", 0x3F800000, "chorus", kOnOff},
    {"Depth_1", 0x3F1CAC08, "slow-depth", kItself},
    {"Depth_6", 0x3E6F9DB2, "fast-depth", kItself},
    {"Wide", 0x3F0624DD, "wide", {1.0, 1.3, 1.5, 1.999, 2.0}},
    {"Stereo", 0x3F4AC083, "stereo", kItself},
    {"DryAdd", 0x3EEB851F, "dry-add", kItself},
    {"Phaser", 0x00000000, "phaser", kOnOff},
    {"Rate", 0x3E989375, "phaser-rate", kItself},
    {"Amnt", 0x3E27EF9E, "phaser-feedback", kItself},
    {"Stages", 0x3F000000, "phaser-stages", kItself},
    {"Width", 0x3F7AE148, "phaser-depth", kItself},
    {"Reverb", 0x00000000, "reverb", kOnOff},
    {"Mix", 0x3F5D2F1B, "mix", kItself},
    {"Size", 0x3E27EF9E, "size", kItself},
    {"Brite", 0x3E71A9FC, "brite", kItself},
    {"Spring", 0x3E99999A, "spring", kItself},
};

// Applies the value; returns the engine's call and its argument.
std::pair<std::string, double> toldAt(int index, float value) {
    RecordingEngine engine;
    state::parameter(index).apply(engine, value);
    const std::string call = engine.log.take();
    const std::size_t equals = std::min(call.find('='), call.size());
    return {call.substr(0, equals), std::atof(call.c_str() + std::min(equals + 1, call.size()))};
}

TEST(Parameters, KeepTheirNamesAndDefaultsAndWhatTheyTellTheEngine) {
    ASSERT_EQ(std::size(kRows), state::kNumParams);
    for (int index = 0; index < state::kNumParams; ++index) {
        const auto& row = kRows[index];
        SCOPED_TRACE(row.name);
        EXPECT_EQ(state::parameter(index).index, index);
        EXPECT_STREQ(state::parameter(index).name, row.name);
        EXPECT_EQ(bits(state::parameter(index).defaultValue), row.defaultBits);
        for (std::size_t i = 0; i < std::size(kValues); ++i) {
            const auto [call, argument] = toldAt(index, kValues[i]);
            EXPECT_EQ(call, row.call);
            EXPECT_NEAR(argument, row.told[i], std::fabs(row.told[i]) * 1e-6) << kValues[i];
        }
    }
    // The positions in between.
    EXPECT_EQ(toldAt(state::kWaveform, 0.49f).second, 0);
    const double ratios[] = {3, 5.25, 6, 8.25, 9, 11.25, 12, 14.25};
    const int keys[] = {36, 45, 48, 57, 60, 69, 72, 81};
    for (int k = 0; k < 8; ++k) {
        const float value = static_cast<float>(k + 0.01) / 7.0f;
        EXPECT_NEAR(toldAt(state::kKSplit, std::min(value, 1.0f)).second, ratios[k] / 11, 1e-6);
        EXPECT_EQ(state::splitKeyAt(k), keys[k]);
    }
}

TEST(Parameters, GiveTheEngineFiniteValuesWithinItsRange) {
    for (const auto& [value, sent] : {std::pair{NAN, 0.0f},
                                      {INFINITY, 1.0f},
                                      {-INFINITY, 0.0f},
                                      {-0.2f, 0.0f},
                                      {1.7f, 1.0f},
                                      {0.25f, 0.25f}}) {
        EXPECT_EQ(state::engineValue(value), sent);
    }
}

TEST(Parameters, CountVoicesFromSixToAll) {
    for (const auto& [value, voices] :
         {std::pair{0.0f, 6}, {0.5f, 25}, {1.0f, 44}, {1e9f, 44}, {-1e9f, 6}, {NAN, 6}}) {
        EXPECT_EQ(state::voiceCount(value), voices);
    }
}

TEST(Parameters, ShowThreeDecimalsInAHostsBuffer) {
    EXPECT_EQ(state::valueText(0.3f), "0.300");
    EXPECT_EQ(state::valueText(1.0f), "1.000");
    EXPECT_EQ(state::valueText(0.0005f), "0.001");
    EXPECT_EQ(state::valueText(std::nanf("")), "0.000");
    EXPECT_EQ(state::valueText(-1e30f), "-99.000");  // seven characters at most
    EXPECT_EQ(state::valueText(1e30f), "999.000");
}

}  // namespace
