// Values as texts with units, and back.
#include "state/parameter_text.h"

#include <cmath>
#include <set>

#include <gtest/gtest.h>

namespace {

using namespace state;

TEST(ParameterText, SaysWhatTheEngineIsTold) {
    const struct {
        int index;
        float value;
        const char* text;
    } rows[] = {
        {kVolume, 1.0f, "0.0 dB"},
        {kVolume, 0.5f, "-6.0 dB"},
        {kVolume, 0.0f, "-inf dB"},
        {kViolin, 1.0f, "-8.0 dB"},
        {kPan, 0.5f, "0.0 %"},
        {kMasterP, 0.0f, "-100.0 ct"},
        {kHP, 0.0f, "98 Hz"},
        {kHP, 1.0f, "8.20 kHz"},
        {kBrigthness, 0.0f, "-12.0 dB"},
        {kBrigthness, 1.0f, "12.0 dB"},
        {kWaveform, 0.49f, "String"},
        {kWaveform, 0.5f, "Bowed"},
        {kWaveform, 1.0f, "Hollow"},
        {kEnvAttack, 0.0f, "0.0 ms"},
        {kEnvAttack, 0.5f, "0.63 s"},
        {kEnvAttack, 1.0f, "10.00 s"},
        {kEnvDecay, 0.0f, "0.10 s"},
        {kEnvRelease, 0.0f, "0.17 s"},
        {kEnvRelease, 1.0f, "13.99 s"},
        {kViola2, 0.5f, "Off"},
        {kViola2, 0.51f, "On"},
        {kKSplit, 0.0f, "C1"},
        {kKSplit, 0.15f, "A1"},
        {kKSplit, 0.5f, "A2"},
        {kKSplit, 0.999f, "C4"},
        {kKSplit, 1.0f, "A4"},
        {kVlphs, 1.0f, "180.0 °"},
        {kConfigs, 0.0f, "Poly"},
        {kConfigs, 1.0f, "Para"},
        {kWide, 1.0f, "200.0 %"},
        {kRate, 0.0f, "0.03 Hz"},
        {kRate, 1.0f, "2.52 Hz"},
        {kMix, NAN, "0.0 %"},
    };
    for (const auto& row : rows) EXPECT_EQ(plainText(row.index, row.value), row.text) << row.index;
}

TEST(ParameterText, IsReadWithToleranceAndNotGuessed) {
    const struct {
        int index;
        const char* text;
        double plain;  // not a number: refused
    } rows[] = {
        {kEnvAttack, "620 ms", 0.62}, {kEnvAttack, ".62", 0.62},    {kEnvAttack, " 0,62 S ", 0.62},
        {kEnvAttack, "1e9", 10.0},    {kEnvAttack, "0.62 Hz", NAN}, {kEnvAttack, "", NAN},
        {kEnvAttack, "nan", NAN},     {kHP, "1.5khz", 1500.0},      {kHP, "-5", 98.0},
        {kVolume, "-inf dB", -120.0}, {kVolume, "+3 dB", 0.0},      {kVlphs, "90", 90.0},
        {kWaveform, "bowed", 1.0},    {kWaveform, "Bow", NAN},      {kReverb, " ON", 1.0},
        {kKSplit, "c3", 4.0},         {kKSplit, "D3", NAN},         {kMasterP, "12 ct", 12.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto value = valueFromText(row.index, row.text);
        ASSERT_EQ(value.has_value(), !std::isnan(row.plain));
        if (!value) continue;
        EXPECT_NEAR(plainValue(row.index, *value), row.plain, 1e-4 * (1 + std::abs(row.plain)));
    }
}

TEST(ParameterText, StaysThroughEveryRoundAndNeverFalls) {
    std::set<std::string> titles;
    for (int index = 0; index < kNumParams; ++index) {
        SCOPED_TRACE(parameter(index).title);
        EXPECT_TRUE(titles.insert(parameter(index).title).second);
        double last = -INFINITY;
        for (int step = 0; step <= 5000; ++step) {
            const float value = static_cast<float>(step) / 5000.0f;
            const double plain = plainValue(index, value);
            EXPECT_GE(plain, last) << value;
            last = plain;
            const std::string text = plainText(index, value);
            const auto back = valueFromText(index, text);
            ASSERT_TRUE(back) << text;
            ASSERT_EQ(plainText(index, *back), text) << value;
            ASSERT_EQ(plainText(index, valueFromPlain(index, plain)), text) << value;
        }
        for (const float end : {0.0f, 1.0f}) {
            EXPECT_EQ(valueFromText(index, plainText(index, end)), end);
        }
    }
}

}  // namespace
